#pragma once

#include <TimeAndText/Date.h>

#include <algorithm>
#include <cmath>
#include <cstdint>

// Between dates (binary fractions since 2001) and whole seconds since 1970, without losing the fraction.
namespace platform {

inline constexpr std::int64_t referenceSeconds = 978307200;

/// Cut off towards the past. Dates beyond 30 million years are held there, NaN is the
/// reference date, so that no arithmetic below overflows.
inline std::int64_t wholeSecondsSince1970(Date date) {
    constexpr double furthest = 1e15;
    const double seconds = date.timeIntervalSinceReferenceDate();
    if (std::isnan(seconds)) return referenceSeconds;
    return static_cast<std::int64_t>(std::floor(std::clamp(seconds, -furthest, furthest))) + referenceSeconds;
}

/// 0 up to but not including 1.
inline double fractionOfSecond(Date date) {
    const double seconds = date.timeIntervalSinceReferenceDate();
    return std::isfinite(seconds) ? seconds - std::floor(seconds) : 0;
}

inline Date dateOfSeconds(std::int64_t secondsSince1970) {
    return Date(static_cast<double>(secondsSince1970 - referenceSeconds));
}

}  // namespace platform
