#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace hbr {

/// Seconds of "90", "90s", "5m", "1h", "1h30m" or "1h30"; nothing for other texts and for numbers that
/// overflow.
std::optional<std::int64_t> secondsOfDuration(std::string_view text);

}  // namespace hbr
