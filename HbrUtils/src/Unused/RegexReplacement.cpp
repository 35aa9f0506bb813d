#include <HbrUtils/Unused/RegexReplacement.h>

namespace hbr {

std::string replacingRegex(std::string_view text, std::string_view matching,
                           platform::RegularExpression::Options findingOptions,
                           platform::RegularExpression::MatchingOptions replacingOptions,
                           std::string_view with) {
    return platform::RegularExpression(matching, findingOptions)
        .replacingMatches(text, with, replacingOptions);
}

}  // namespace hbr
