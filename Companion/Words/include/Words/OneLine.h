#pragma once

#include <string>
#include <string_view>

namespace hbr {

/// Text from outside made safe for a terminal line: control characters (line breaks, escape sequences)
/// become blanks, and characters that control the direction of writing are removed.
std::string onOneLine(std::string_view text);

}  // namespace hbr
