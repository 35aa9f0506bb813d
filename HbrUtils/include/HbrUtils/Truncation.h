#pragma once

#include <string>
#include <string_view>

namespace hbr {

/// At most `maxLength` user-perceived characters, the terminator behind them when something was cut; empty
/// when `maxLength` is below 1.
std::string truncated(std::string_view text, int maxLength, std::string_view terminator);

}  // namespace hbr
