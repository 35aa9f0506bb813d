#include <Foundation/LogicalLines.h>

namespace platform {

LogicalLines::LogicalLines(std::string_view text) : rest_(text) {
    if (text.find('\n') == std::string_view::npos) lineEnd_ = '\r';
}

std::string_view LogicalLines::physicalLine() {
    const auto end = rest_.find(lineEnd_);
    auto line = rest_.substr(0, end);
    rest_ = end == std::string_view::npos ? std::string_view() : rest_.substr(end + 1);
    ++physicalLines_;
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

bool LogicalLines::next() {
    const auto isFold = [this] { return !rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t'); };
    if (rest_.empty()) return false;
    number_ = physicalLines_ + 1;
    tooLong_ = false;
    line_ = physicalLine();
    if (isFold()) {
        joined_.assign(line_.substr(0, maximumLength));
        tooLong_ = line_.size() > maximumLength;
        while (isFold()) {
            const auto piece = physicalLine().substr(1);
            if (joined_.size() + piece.size() > maximumLength) {
                tooLong_ = true;
            } else {
                joined_ += piece;
            }
        }
        line_ = joined_;
    } else if (line_.size() > maximumLength) {
        tooLong_ = true;
        line_ = line_.substr(0, maximumLength);
    }
    return true;
}

}  // namespace platform
