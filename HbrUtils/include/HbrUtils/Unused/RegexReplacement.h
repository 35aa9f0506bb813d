#pragma once

#include <TimeAndText/RegularExpression.h>

#include <string>
#include <string_view>

namespace hbr {

/// Every match of the pattern (ICU syntax) replaced by the template ("$1": first group; a group that
/// the pattern does not have is empty). Throws
/// platform::RegularExpression::Error when the pattern does not compile.
std::string replacingRegex(std::string_view text, std::string_view matching,
                           platform::RegularExpression::Options findingOptions,
                           platform::RegularExpression::MatchingOptions replacingOptions,
                           std::string_view with);

}  // namespace hbr
