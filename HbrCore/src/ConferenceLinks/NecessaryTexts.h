#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Texts one of which is part of every match of the pattern (ICU syntax, no options): a text that holds none
/// of them need not be searched. Empty when nothing can be said; the pattern need not compile.
std::vector<std::string> necessaryTexts(std::string_view pattern);

}  // namespace hbr
