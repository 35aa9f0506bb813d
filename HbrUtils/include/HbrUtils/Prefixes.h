#pragma once

#include <string_view>

namespace hbr {

/// Without the prefix, if the text starts with its characters as a reader sees them: "e" is not a prefix of
/// "é", however that is encoded. The result lives as long as the text.
std::string_view deletingPrefix(std::string_view text, std::string_view prefix);

}  // namespace hbr
