#include <TimeAndText/LocalTime.h>

#include "CivilDays.h"

namespace platform {
namespace {

constexpr std::int64_t secondsPerDay = 86400;

struct Division {
    std::int64_t quotient;
    std::int64_t remainder;
};

/// The remainder is never negative.
constexpr Division floorDivide(std::int64_t value, std::int64_t by) {
    const std::int64_t remainder = value % by;
    return remainder < 0 ? Division{value / by - 1, remainder + by} : Division{value / by, remainder};
}

}  // namespace

// Both count from 1 March 0000, so that the leap day is the last of its year; 146097 days make 400 years.
std::int64_t daysSince1970(std::int64_t year, std::int64_t month, std::int64_t day) {
    const auto months = floorDivide(month - 3, 12);
    const auto era = floorDivide(year + months.quotient, 400);
    const std::int64_t yearOfEra = era.remainder;
    const std::int64_t dayOfYear = (153 * months.remainder + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era.quotient * 146097 + dayOfEra - 719468;
}

std::int64_t secondsOf(const LocalTime& local) {
    return daysSince1970(local.year, local.month, local.day) * secondsPerDay +
           std::int64_t{local.hour} * 3600 + std::int64_t{local.minute} * 60 + local.second;
}

LocalTime localTimeOf(std::int64_t seconds) {
    const auto days = floorDivide(seconds, secondsPerDay);
    const auto era = floorDivide(days.quotient + 719468, 146097);
    const std::int64_t dayOfEra = era.remainder;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t monthFromMarch = (5 * dayOfYear + 2) / 153;
    const bool nextYear = monthFromMarch >= 10;

    LocalTime local;
    local.year = static_cast<int>(era.quotient * 400 + yearOfEra + (nextYear ? 1 : 0));
    local.month = static_cast<int>(nextYear ? monthFromMarch - 9 : monthFromMarch + 3);
    local.day = static_cast<int>(dayOfYear - (153 * monthFromMarch + 2) / 5 + 1);
    local.hour = static_cast<int>(days.remainder / 3600);
    local.minute = static_cast<int>(days.remainder / 60 % 60);
    local.second = static_cast<int>(days.remainder % 60);
    return local;
}

}  // namespace platform
