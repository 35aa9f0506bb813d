#include "BracketPairs.h"

#include "CharacterTraits.h"

#include <algorithm>

namespace platform {

bool BracketPairs::isClosed(std::size_t bracket) {
    if (bracket >= matchedUntil_) match(bracket);
    while (next_ < closed_.size() && closed_[next_] < bracket)
        ++next_;
    return next_ < closed_.size() && closed_[next_] == bracket;
}

void BracketPairs::match(std::size_t from) {
    std::vector<std::size_t> openRound;
    std::vector<std::size_t> openSquare;
    closed_.clear();
    next_ = 0;
    auto end = from;
    for (; end < text_.size() && !hasTrait(text_[end], endsLink); ++end) {
        const char c = text_[end];
        auto& open = c == '(' || c == ')' ? openRound : openSquare;
        if (isOpeningBracket(c)) {
            open.push_back(end);
        } else if (isClosingBracket(c) && !open.empty()) {
            closed_.push_back(open.back());
            open.pop_back();
        }
    }
    std::ranges::sort(closed_);
    matchedUntil_ = end;
}

}  // namespace platform
