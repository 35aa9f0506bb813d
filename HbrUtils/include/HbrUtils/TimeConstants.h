#pragma once

// Lengths of time in seconds.
namespace hbr {

inline constexpr double MINUTE = 60;
inline constexpr double HOUR = 3600;
inline constexpr double DAY = 86400;

constexpr double minutes(int count) {
    return count * MINUTE;
}
constexpr double hours(int count) {
    return count * HOUR;
}
constexpr double days(int count) {
    return count * DAY;
}

constexpr double asMinutes(double seconds) {
    return seconds / MINUTE;
}
constexpr double asHours(double seconds) {
    return seconds / HOUR;
}
constexpr double asDays(double seconds) {
    return seconds / DAY;
}

}  // namespace hbr
