#include "CardLines.h"

#include <algorithm>

namespace platform {
namespace {

bool looksLikeBase64(std::string_view line) {
    return !line.empty() && std::all_of(line.begin(), line.end(), [](char c) {
        return isAsciiAlphanumeric(c) || c == '+' || c == '/' || c == '=';
    });
}

}  // namespace

bool isBase64(const ContentLine& content) {
    if (content.parameters.empty()) return false;
    if (const auto encoding = content.parameter("ENCODING")) {
        return equalIgnoringCase(*encoding, "B") || equalIgnoringCase(*encoding, "BASE64");
    }
    return content.hasType("BASE64");
}

bool isQuotedPrintable(const ContentLine& content) {
    if (content.parameters.empty()) return false;
    if (const auto encoding = content.parameter("ENCODING")) {
        return equalIgnoringCase(*encoding, "QUOTED-PRINTABLE");
    }
    return content.hasType("QUOTED-PRINTABLE");
}

bool CardLines::next() {
    begin_ = end_;
    if (!hasPending_ && !lines_.next()) return false;
    hasPending_ = false;
    line_ = lines_.line();
    number_ = lines_.number();
    tooLong_ = lines_.tooLong();
    end_ = lines_.position();
    content_ = ContentLine::parse(line_);
    if (content_ && isBase64(*content_)) joinBase64();
    return true;
}

void CardLines::joinBase64() {
    joined_.assign(line_);
    while (lines_.next()) {
        if (!looksLikeBase64(lines_.line())) {
            hasPending_ = true;
            break;
        }
        tooLong_ = tooLong_ || joined_.size() + lines_.line().size() > longestLine;
        if (!tooLong_) joined_ += lines_.line();
        end_ = lines_.position();
    }
    line_ = joined_;
    content_ = ContentLine::parse(line_);
}

}  // namespace platform
