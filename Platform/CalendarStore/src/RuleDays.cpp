#include "RuleDays.h"

#include <algorithm>
#include <chrono>

namespace platform {

namespace {

using Frequency = RecurrenceRule::Frequency;

bool isLeap(int year) {
    return std::chrono::year(year).is_leap();
}

int nthFromFront(int dayIndex) {
    return dayIndex / 7 + 1;
}
int nthFromBack(int dayIndex, int length) {
    return -((length - 1 - dayIndex) / 7 + 1);
}

/// First day of week 1 of the year: the first week with at least four days in it.
std::int64_t firstWeekStart(int year, int weekStart) {
    const auto fourth = dayNumber(year, 1, 4);
    return fourth - (weekdayOf(fourth) - weekStart + 7) % 7;
}

bool matchesWeekNumber(const RecurrenceRule& rule, std::int64_t day, int year) {
    int weekYear = year;
    auto first = firstWeekStart(weekYear, rule.weekStart);
    if (day < first) first = firstWeekStart(--weekYear, rule.weekStart);
    auto next = firstWeekStart(weekYear + 1, rule.weekStart);
    if (day >= next) {
        first = next;
        next = firstWeekStart(weekYear + 2, rule.weekStart);
    }
    return containsEither(rule.weekNumbers, static_cast<int>((day - first) / 7) + 1,
                          static_cast<int>((next - first) / 7));
}

bool passesWeekday(const RecurrenceRule& rule, const RuleDay& day) {
    if (rule.weekdays.empty()) return true;
    const int weekday = weekdayOf(day.number);
    const bool byYear = rule.frequency == Frequency::yearly && rule.months.empty();
    const bool positionsCount = (rule.frequency == Frequency::yearly && rule.weekNumbers.empty()) ||
                                rule.frequency == Frequency::monthly;
    const int index = byYear ? day.yearDay() - 1 : day.day - 1;
    const int length = byYear ? day.yearLength() : day.monthLength();
    return std::any_of(
        rule.weekdays.begin(), rule.weekdays.end(), [&](const RecurrenceRule::Weekday& wanted) {
            if (wanted.day != weekday) return false;
            return wanted.position == 0 || !positionsCount || wanted.position == nthFromFront(index) ||
                   wanted.position == nthFromBack(index, length);
        });
}

}  // namespace

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0));
}

std::int64_t dayNumber(int year, int month, int day) {
    using namespace std::chrono;
    return sys_days(std::chrono::year(year) / month / day).time_since_epoch().count();
}

int weekdayOf(std::int64_t day) {
    return static_cast<int>(((day + 4) % 7 + 7) % 7);
}

bool contains(const std::vector<int>& list, int value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

bool containsEither(const std::vector<int>& list, int value, int length) {
    return contains(list, value) || contains(list, value - length - 1);
}

RuleDay::RuleDay(std::int64_t dayNumber) : number(dayNumber) {
    using namespace std::chrono;
    const year_month_day date{sys_days{std::chrono::days(dayNumber)}};
    year = static_cast<int>(date.year());
    month = static_cast<int>(static_cast<unsigned>(date.month()));
    day = static_cast<int>(static_cast<unsigned>(date.day()));
}

int RuleDay::monthLength() const {
    using namespace std::chrono;
    const year_month_day_last last{std::chrono::year(year),
                                   month_day_last{std::chrono::month(static_cast<unsigned>(month))}};
    return static_cast<int>(static_cast<unsigned>(last.day()));
}

int RuleDay::yearDay() const {
    return static_cast<int>(number - dayNumber(year, 1, 1)) + 1;
}

int RuleDay::yearLength() const {
    return isLeap(year) ? 366 : 365;
}

bool hasDayParts(const RecurrenceRule& rule) {
    return !rule.weekdays.empty() || !rule.monthDays.empty() || !rule.yearDays.empty();
}

bool passesDayParts(const RecurrenceRule& rule, const RuleDay& day) {
    if (!rule.months.empty() && !contains(rule.months, day.month)) return false;
    if (!rule.monthDays.empty() && !containsEither(rule.monthDays, day.day, day.monthLength())) return false;
    if (!rule.yearDays.empty() && !containsEither(rule.yearDays, day.yearDay(), day.yearLength()))
        return false;
    if (!rule.weekNumbers.empty() && !matchesWeekNumber(rule, day.number, day.year)) return false;
    return passesWeekday(rule, day);
}

void collectDays(const RecurrenceRule& rule, std::int64_t first, std::int64_t last,
                 std::vector<std::int64_t>& days) {
    days.clear();
    for (auto number = first; number <= last; ++number) {
        if (passesDayParts(rule, RuleDay(number))) days.push_back(number);
    }
}

}  // namespace platform
