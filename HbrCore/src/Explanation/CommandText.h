#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// "heedbanner WORD …" as one would type it into a shell, words quoted where they need it.
std::string commandText(const std::vector<std::string>& words);

}  // namespace hbr
