#pragma once

#include "RecurrenceRule.h"

#include <cstdint>
#include <vector>

namespace platform {

// Days of the Gregorian calendar by number, 1970-01-01 is 0, and which of them a rule's BYMONTH, BYMONTHDAY,
// BYYEARDAY, BYWEEKNO and BYDAY let through (RFC 5545, 3.3.10).

inline constexpr std::int64_t secondsPerDay = 86400;

/// Rounds down, also below zero.
std::int64_t floorDivide(std::int64_t a, std::int64_t b);

std::int64_t dayNumber(int year, int month, int day);
/// 0 Sunday to 6 Saturday.
int weekdayOf(std::int64_t day);

struct RuleDay {
    explicit RuleDay(std::int64_t dayNumber);
    int monthLength() const;
    int yearDay() const;
    int yearLength() const;

    std::int64_t number;
    int year;
    int month;
    int day;
};

bool contains(const std::vector<int>& list, int value);
/// `value`, or the same counted from the end of `length`.
bool containsEither(const std::vector<int>& list, int value, int length);

/// The rule names its days, so that the start's day is not taken.
bool hasDayParts(const RecurrenceRule& rule);
bool passesDayParts(const RecurrenceRule& rule, const RuleDay& day);
/// The days from `first` to `last` that pass, ascending, in place of what `days` held.
void collectDays(const RecurrenceRule& rule, std::int64_t first, std::int64_t last,
                 std::vector<std::int64_t>& days);

}  // namespace platform
