#include "RuleExpansion.h"

#include <algorithm>
#include <chrono>

namespace platform {
namespace {

using Frequency = RecurrenceRule::Frequency;

constexpr std::int64_t secondsPerDay = 86400;
/// Beyond the years that four digits write.
constexpr int lastYear = 9999;

std::int64_t floorDivide(std::int64_t a, std::int64_t b) {
    return a / b - (a % b != 0 && (a < 0) != (b < 0));
}

std::int64_t dayNumber(int year, int month, int day) {
    using namespace std::chrono;
    return sys_days(std::chrono::year(year) / month / day).time_since_epoch().count();
}

/// 0 Sunday to 6 Saturday; day 0 (1970-01-01) was a Thursday.
int weekdayOf(std::int64_t day) {
    return static_cast<int>(((day + 4) % 7 + 7) % 7);
}

bool isLeap(int year) {
    return std::chrono::year(year).is_leap();
}

bool contains(const std::vector<int>& list, int value) {
    return std::find(list.begin(), list.end(), value) != list.end();
}

/// Value from the front, or the same counted from the end.
bool containsEither(const std::vector<int>& list, int value, int length) {
    return contains(list, value) || contains(list, value - length - 1);
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

std::int64_t periodSeconds(Frequency frequency) {
    switch (frequency) {
        case Frequency::secondly:
            return 1;
        case Frequency::minutely:
            return 60;
        default:
            return 3600;
    }
}

}  // namespace

struct RuleExpansion::Day {
    explicit Day(std::int64_t dayNumber) : number(dayNumber) {
        using namespace std::chrono;
        const year_month_day date{sys_days{std::chrono::days(dayNumber)}};
        year = static_cast<int>(date.year());
        month = static_cast<int>(static_cast<unsigned>(date.month()));
        day = static_cast<int>(static_cast<unsigned>(date.day()));
    }
    int monthLength() const {
        using namespace std::chrono;
        const year_month_day_last last{std::chrono::year(year),
                                       month_day_last{std::chrono::month(static_cast<unsigned>(month))}};
        return static_cast<int>(static_cast<unsigned>(last.day()));
    }
    int yearDay() const { return static_cast<int>(number - platform::dayNumber(year, 1, 1)) + 1; }
    int yearLength() const { return isLeap(year) ? 366 : 365; }

    std::int64_t number;
    int year;
    int month;
    int day;
};

RuleExpansion::RuleExpansion(const RecurrenceRule& rule, const LocalTime& start, bool allDay)
    : rule_(rule), start_(secondsOf(start)), startTime_(start) {
    if (allDay) {
        rule_.hours.clear();
        rule_.minutes.clear();
        rule_.seconds.clear();
        // An all-day event has no hours to repeat by.
        if (rule_.frequency < Frequency::daily) rule_.frequency = Frequency::daily;
    }
    if (hasDayParts()) return;
    // What the rule leaves open comes from the start.
    if (rule_.frequency == Frequency::weekly)
        rule_.weekdays = {{0, weekdayOf(floorDivide(start_, secondsPerDay))}};
    if (rule_.frequency == Frequency::monthly) rule_.monthDays = {start.day};
    if (rule_.frequency == Frequency::yearly) {
        if (!rule_.weekNumbers.empty()) {
            rule_.weekdays = {{0, weekdayOf(floorDivide(start_, secondsPerDay))}};
        } else {
            if (rule_.months.empty()) rule_.months = {start.month};
            rule_.monthDays = {start.day};
        }
    }
}

/// Parts that say which days of a period are meant, so that the start's day is not.
bool RuleExpansion::hasDayParts() const {
    return !rule_.weekdays.empty() || !rule_.monthDays.empty() || !rule_.yearDays.empty();
}

bool RuleExpansion::passesWeekday(const Day& day) const {
    if (rule_.weekdays.empty()) return true;
    const int weekday = weekdayOf(day.number);
    const bool byYear = rule_.frequency == Frequency::yearly && rule_.months.empty();
    const bool positionsCount = (rule_.frequency == Frequency::yearly && rule_.weekNumbers.empty()) ||
                                rule_.frequency == Frequency::monthly;
    const int index = byYear ? day.yearDay() - 1 : day.day - 1;
    const int length = byYear ? day.yearLength() : day.monthLength();
    return std::any_of(
        rule_.weekdays.begin(), rule_.weekdays.end(), [&](const RecurrenceRule::Weekday& wanted) {
            if (wanted.day != weekday) return false;
            return wanted.position == 0 || !positionsCount || wanted.position == nthFromFront(index) ||
                   wanted.position == nthFromBack(index, length);
        });
}

bool RuleExpansion::passes(const Day& day) const {
    if (!rule_.months.empty() && !contains(rule_.months, day.month)) return false;
    if (!rule_.monthDays.empty() && !containsEither(rule_.monthDays, day.day, day.monthLength()))
        return false;
    if (!rule_.yearDays.empty() && !containsEither(rule_.yearDays, day.yearDay(), day.yearLength()))
        return false;
    if (!rule_.weekNumbers.empty() && !matchesWeekNumber(rule_, day.number, day.year)) return false;
    return passesWeekday(day);
}

void RuleExpansion::collectDays(std::int64_t first, std::int64_t last,
                                std::vector<std::int64_t>& days) const {
    for (auto number = first; number <= last; ++number) {
        if (passes(Day(number))) days.push_back(number);
    }
}

std::vector<std::int64_t> RuleExpansion::timesOfDay() const {
    const auto orStart = [](const std::vector<int>& list, int start) {
        return list.empty() ? std::vector<int>{start} : list;
    };
    const auto hours = orStart(rule_.hours, startTime_.hour);
    const auto minutes = orStart(rule_.minutes, startTime_.minute);
    const auto seconds = orStart(rule_.seconds, startTime_.second);
    std::vector<std::int64_t> times;
    for (const int hour : hours) {
        for (const int minute : minutes) {
            for (const int second : seconds)
                times.push_back(hour * 3600 + minute * 60 + second);
        }
    }
    // Second 60 is the next minute's first.
    std::sort(times.begin(), times.end());
    times.erase(std::unique(times.begin(), times.end()), times.end());
    return times;
}

/// A year may have every second of it: nothing is listed that is not asked for.
template <class Visit>
bool RuleExpansion::visitInstances(const std::vector<std::int64_t>& days,
                                   const std::vector<std::int64_t>& times, std::int64_t from,
                                   const Visit& visit) const {
    if (rule_.setPositions.empty()) {
        const auto first = std::lower_bound(days.begin(), days.end(), floorDivide(from, secondsPerDay) - 1);
        for (auto day = first; day != days.end(); ++day) {
            for (const auto time : times) {
                if (!visit(*day * secondsPerDay + time)) return false;
            }
        }
        return true;
    }
    const auto perDay = static_cast<std::int64_t>(times.size());
    const auto size = static_cast<std::int64_t>(days.size()) * perDay;
    std::vector<std::int64_t> indices;
    for (const std::int64_t position : rule_.setPositions) {
        const auto index = position > 0 ? position - 1 : size + position;
        if (index >= 0 && index < size) indices.push_back(index);
    }
    std::sort(indices.begin(), indices.end());
    indices.erase(std::unique(indices.begin(), indices.end()), indices.end());
    return std::all_of(indices.begin(), indices.end(), [&](std::int64_t index) {
        return visit(days[static_cast<std::size_t>(index / perDay)] * secondsPerDay +
                     times[static_cast<std::size_t>(index % perDay)]);
    });
}

void RuleExpansion::applySetPositions(std::vector<std::int64_t>& instances) const {
    if (rule_.setPositions.empty()) return;
    const auto size = static_cast<int>(instances.size());
    std::vector<std::int64_t> chosen;
    for (int i = 0; i < size; ++i) {
        if (containsEither(rule_.setPositions, i + 1, size))
            chosen.push_back(instances[static_cast<std::size_t>(i)]);
    }
    instances = std::move(chosen);
}

std::int64_t RuleExpansion::lastSecond() {
    return secondsOf({lastYear, 12, 31, 23, 59, 59});
}

RuleExpansion::Outcome RuleExpansion::visit(std::int64_t from, std::int64_t to, const Visitor& visit,
                                            ExpansionBudget& budget) const {
    from = std::max(from, start_);
    to = std::min(to, lastSecond());
    if (from > to) return Outcome::finished;
    return rule_.frequency < Frequency::daily ? visitTimes(from, to, visit, budget)
                                              : visitDays(from, to, visit, budget);
}

/// Years, months, weeks and days.
RuleExpansion::Outcome RuleExpansion::visitDays(std::int64_t from, std::int64_t to, const Visitor& visit,
                                                ExpansionBudget& budget) const {
    const auto startDay = floorDivide(start_, secondsPerDay);
    const auto fromDay = floorDivide(from, secondsPerDay);
    const Day first(startDay);
    const Day wanted(fromDay);
    const auto weekOf = [this](std::int64_t day) { return day - (weekdayOf(day) - rule_.weekStart + 7) % 7; };

    // Whole periods between the start's and the one that holds `from`.
    std::int64_t distance = 0;
    switch (rule_.frequency) {
        case Frequency::yearly:
            distance = wanted.year - first.year;
            break;
        case Frequency::monthly:
            distance = (wanted.year - first.year) * 12 + wanted.month - first.month;
            break;
        case Frequency::weekly:
            distance = (weekOf(fromDay) - weekOf(startDay)) / 7;
            break;
        default:
            distance = fromDay - startDay;
            break;
    }
    const std::vector<std::int64_t> times = timesOfDay();
    constexpr std::size_t timesOfStep = 10;
    if (!budget.takeSteps(static_cast<std::int64_t>(times.size() / timesOfStep))) return Outcome::tooMany;
    std::vector<std::int64_t> days;
    for (auto period = distance / rule_.interval * rule_.interval;; period += rule_.interval) {
        std::int64_t steps = 1;
        std::int64_t begin = 0;
        std::int64_t end = 0;
        if (rule_.frequency == Frequency::yearly) {
            const auto year = first.year + period;
            if (year > lastYear) return Outcome::finished;
            begin = dayNumber(static_cast<int>(year), 1, 1);
            end = dayNumber(static_cast<int>(year), 12, 31);
            steps += 100;
        } else if (rule_.frequency == Frequency::monthly) {
            const auto month = first.year * std::int64_t{12} + first.month - 1 + period;
            if (month / 12 > lastYear) return Outcome::finished;
            begin = dayNumber(static_cast<int>(month / 12), static_cast<int>(month % 12) + 1, 1);
            end = begin + Day(begin).monthLength() - 1;
            steps += 10;
        } else {
            const bool weekly = rule_.frequency == Frequency::weekly;
            begin = (weekly ? weekOf(startDay) + period * 7 : startDay + period);
            end = begin + (weekly ? 6 : 0);
        }
        if (begin * secondsPerDay > to) return Outcome::finished;
        if (!budget.takeSteps(steps)) return Outcome::tooMany;

        days.clear();
        const bool singleMonth =
            rule_.frequency == Frequency::yearly && rule_.months.size() == 1 && rule_.weekNumbers.empty();
        if (singleMonth) {
            const auto year = static_cast<int>(first.year + period);
            begin = dayNumber(year, rule_.months.front(), 1);
            end = begin + Day(begin).monthLength() - 1;
        }
        collectDays(begin, end, days);
        std::optional<Outcome> outcome;
        visitInstances(days, times, from, [&](std::int64_t instance) {
            if (instance < from) return true;
            if (instance > to) {
                outcome = Outcome::finished;
            } else if (!budget.takeSteps()) {
                outcome = Outcome::tooMany;
            } else if (!visit(instance)) {
                outcome = Outcome::stopped;
            }
            return !outcome;
        });
        if (outcome) return *outcome;
    }
}

/// Hours, minutes and seconds: days, hours and minutes that the rule leaves out are leapt over.
RuleExpansion::Outcome RuleExpansion::visitTimes(std::int64_t from, std::int64_t to, const Visitor& visit,
                                                 ExpansionBudget& budget) const {
    const auto unit = periodSeconds(rule_.frequency);
    const auto origin = floorDivide(start_, unit) * unit;
    const auto step = unit * rule_.interval;
    const auto firstAtOrAfter = [&](std::int64_t moment) {
        return moment <= origin ? origin : origin + (moment - origin + step - 1) / step * step;
    };
    const auto outside = [](const std::vector<int>& list, std::int64_t value) {
        return !list.empty() && !contains(list, static_cast<int>(value));
    };
    std::vector<std::int64_t> instances;
    std::int64_t checkedDay = INT64_MIN;
    for (auto period = firstAtOrAfter(from - unit + 1); period <= to;) {
        if (!budget.takeSteps()) return Outcome::tooMany;
        const auto day = floorDivide(period, secondsPerDay);
        const auto second = period - day * secondsPerDay;
        if (day != checkedDay && !passes(Day(day))) {
            period = firstAtOrAfter((day + 1) * secondsPerDay);
            continue;
        }
        checkedDay = day;
        if (outside(rule_.hours, second / 3600)) {
            period = firstAtOrAfter(day * secondsPerDay + (second / 3600 + 1) * 3600);
            continue;
        }
        if (unit <= 60 && outside(rule_.minutes, second / 60 % 60)) {
            period = firstAtOrAfter(day * secondsPerDay + (second / 60 + 1) * 60);
            continue;
        }
        if (unit == 1 && outside(rule_.seconds, second % 60)) {
            period += step;
            continue;
        }
        instances.clear();
        const auto minutes = unit < 3600             ? std::vector<int>{0}
                             : rule_.minutes.empty() ? std::vector<int>{startTime_.minute}
                                                     : rule_.minutes;
        const auto seconds = unit == 1               ? std::vector<int>{0}
                             : rule_.seconds.empty() ? std::vector<int>{startTime_.second}
                                                     : rule_.seconds;
        for (const int m : minutes) {
            for (const int s : seconds)
                instances.push_back(period + m * 60 + s);
        }
        applySetPositions(instances);
        for (const auto instance : instances) {
            if (instance < from) continue;
            if (instance > to) return Outcome::finished;
            if (!budget.takeSteps()) return Outcome::tooMany;
            if (!visit(instance)) return Outcome::stopped;
        }
        period += step;
    }
    return Outcome::finished;
}

bool RuleExpansion::yieldsAnything(std::int64_t& steps) const {
    // Rules with one kind of day part always come round; combinations may exclude each other for good.
    const int parts = !rule_.months.empty() + !rule_.monthDays.empty() + !rule_.yearDays.empty() +
                      !rule_.weekNumbers.empty() + !rule_.weekdays.empty() + !rule_.setPositions.empty();
    if (parts < 2 && rule_.interval == 1) return true;
    if (steps <= 0) return true;
    ExpansionBudget budget;
    bool found = false;
    const auto years = std::int64_t{41} * (rule_.frequency == Frequency::yearly ? rule_.interval : 1);
    const auto onInstance = [&](std::int64_t) {
        found = true;
        return false;
    };
    const auto outcome = visit(start_ + 1, start_ + years * 366 * secondsPerDay, onInstance, budget);
    steps -= budget.stepsTaken();
    return found || outcome == Outcome::tooMany;
}

}  // namespace platform
