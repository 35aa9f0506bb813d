#pragma once

#include <compare>
#include <cstdint>

namespace platform {

/// A wall-clock reading without a zone, proleptic Gregorian. Month and day count from 1.
struct LocalTime {
    int year = 2001;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;

    friend bool operator==(const LocalTime&, const LocalTime&) = default;
    friend auto operator<=>(const LocalTime&, const LocalTime&) = default;
};

/// Seconds of `local` since 1970-01-01 00:00 read as if it were UTC. Fields out of range carry over.
std::int64_t secondsOf(const LocalTime& local);
/// The reading `seconds` after 1970-01-01 00:00, the inverse of secondsOf.
LocalTime localTimeOf(std::int64_t seconds);

}  // namespace platform
