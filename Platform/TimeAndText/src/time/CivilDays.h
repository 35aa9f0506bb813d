#pragma once

#include <cstdint>

namespace platform {

/// Days from 1970-01-01 to a proleptic Gregorian date; months and days out of range carry over.
std::int64_t daysSince1970(std::int64_t year, std::int64_t month, std::int64_t day);

/// 0 Sunday to 6 Saturday.
constexpr int weekdayOfDays(std::int64_t days) {
    const auto weekday = static_cast<int>((days + 4) % 7);
    return weekday < 0 ? weekday + 7 : weekday;
}

}  // namespace platform
