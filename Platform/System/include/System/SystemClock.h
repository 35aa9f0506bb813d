#pragma once

#include <TimeAndText/Date.h>

#include <ctime>

namespace platform {

/// The wall clock of the system, by which WallClockTimer goes; whole seconds are subtracted first so that the
/// fraction keeps its precision.
inline Date systemNow() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    constexpr auto reference = static_cast<time_t>(Date::referenceSince1970);
    return Date(static_cast<double>(now.tv_sec - reference) + static_cast<double>(now.tv_nsec) * 1e-9);
}

}  // namespace platform
