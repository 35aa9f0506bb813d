#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hbr {

/// Seconds of "90", "90s", "5m", "1h", "1h30m", "1h30"; nothing for anything else or when it does not fit.
std::optional<std::int64_t> secondsOfDuration(std::string_view text);

}  // namespace hbr
