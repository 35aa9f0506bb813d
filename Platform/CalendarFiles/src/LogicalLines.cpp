#include <CalendarFiles/ContentLine.h>
#include <CalendarFiles/LogicalLines.h>

namespace platform {

LogicalLines::LogicalLines(std::string_view text, Options options)
    : options_(options), size_(text.size()), rest_(text) {
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

bool LogicalLines::isSoftBreak() {
    if (!options_.joinsSoftBreaks || !line_.ends_with('=') || rest_.empty()) return false;
    // Parameters of a real line are folded into a few pieces; each search reads the whole line.
    constexpr int mostHeaderSearches = 20;
    if (!isQuotedPrintable_ && headerSearches_++ < mostHeaderSearches) {
        if (const auto content = ContentLine::parse(line_)) {
            const auto encoding = content->parameter("ENCODING");
            isQuotedPrintable_ = encoding ? equalIgnoringCase(*encoding, "QUOTED-PRINTABLE")
                                          : content->hasType("QUOTED-PRINTABLE");
        }
    }
    return isQuotedPrintable_.value_or(false);
}

void LogicalLines::append(std::string_view piece) {
    if (joined_.size() + piece.size() > options_.longest) {
        tooLong_ = true;
    } else {
        joined_ += piece;
    }
}

bool LogicalLines::next() {
    const auto isFold = [this] { return !rest_.empty() && (rest_.front() == ' ' || rest_.front() == '\t'); };
    if (rest_.empty()) return false;
    number_ = physicalLines_ + 1;
    line_ = physicalLine();
    tooLong_ = line_.size() > options_.longest;
    line_ = line_.substr(0, options_.longest);
    isQuotedPrintable_.reset();
    headerSearches_ = 0;
    for (bool isFirst = true;; isFirst = false) {
        // A blank behind a soft break belongs to the text.
        const bool isSoft = isSoftBreak();
        if (!isSoft && !isFold()) return true;
        if (isFirst) joined_.assign(line_);
        if (isSoft) joined_.pop_back();
        append(isSoft ? physicalLine() : physicalLine().substr(1));
        line_ = joined_;
    }
}

}  // namespace platform
