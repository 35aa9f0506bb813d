#include "RuleExpansion.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace platform {

namespace {

using Frequency = RecurrenceRule::Frequency;

/// Beyond the years that four digits write.
constexpr int lastYear = 9999;

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

RuleExpansion::RuleExpansion(const RecurrenceRule& rule, const LocalTime& start, bool allDay)
    : rule_(rule), start_(secondsOf(start)), startTime_(start) {
    if (allDay) {
        rule_.hours.clear();
        rule_.minutes.clear();
        rule_.seconds.clear();
        // An all-day event has no hours to repeat by.
        if (rule_.frequency < Frequency::daily) rule_.frequency = Frequency::daily;
    }
    if (hasDayParts(rule_)) return;
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

std::int64_t RuleExpansion::startOfWeek(std::int64_t day) const {
    return day - (weekdayOf(day) - rule_.weekStart + 7) % 7;
}

std::int64_t RuleExpansion::periodsBetween(const RuleDay& first, const RuleDay& day) const {
    switch (rule_.frequency) {
        case Frequency::yearly:
            return day.year - first.year;
        case Frequency::monthly:
            return (day.year - first.year) * 12 + day.month - first.month;
        case Frequency::weekly:
            return (startOfWeek(day.number) - startOfWeek(first.number)) / 7;
        default:
            return day.number - first.number;
    }
}

/// The days of one period.
struct RuleExpansion::Period {
    std::int64_t begin;
    /// Of the days that may pass: those of the only month, in a rule that names one.
    std::int64_t firstDay;
    std::int64_t lastDay;
    std::int64_t steps;
};

std::optional<RuleExpansion::Period> RuleExpansion::period(const RuleDay& first,
                                                           std::int64_t distance) const {
    const auto endOfMonth = [](std::int64_t begin) { return begin + RuleDay(begin).monthLength() - 1; };
    if (rule_.frequency == Frequency::yearly) {
        const auto year = first.year + distance;
        if (year > lastYear) return std::nullopt;
        const auto begin = dayNumber(static_cast<int>(year), 1, 1);
        if (rule_.months.size() == 1 && rule_.weekNumbers.empty()) {
            const auto month = dayNumber(static_cast<int>(year), rule_.months.front(), 1);
            return Period{begin, month, endOfMonth(month), 101};
        }
        return Period{begin, begin, dayNumber(static_cast<int>(year), 12, 31), 101};
    }
    if (rule_.frequency == Frequency::monthly) {
        const auto month = first.year * std::int64_t{12} + first.month - 1 + distance;
        if (month / 12 > lastYear) return std::nullopt;
        const auto begin = dayNumber(static_cast<int>(month / 12), static_cast<int>(month % 12) + 1, 1);
        return Period{begin, begin, endOfMonth(begin), 11};
    }
    if (rule_.frequency == Frequency::weekly) {
        const auto begin = startOfWeek(first.number) + distance * 7;
        return Period{begin, begin, begin + 6, 1};
    }
    const auto day = first.number + distance;
    return Period{day, day, day, 1};
}

/// Years, months, weeks and days.
RuleExpansion::Outcome RuleExpansion::visitDays(std::int64_t from, std::int64_t to, const Visitor& visit,
                                                ExpansionBudget& budget) const {
    const RuleDay first(floorDivide(start_, secondsPerDay));
    const std::vector<std::int64_t> times = timesOfDay();
    constexpr std::size_t timesOfStep = 10;
    if (!budget.takeSteps(static_cast<std::int64_t>(times.size() / timesOfStep))) return Outcome::tooMany;
    std::vector<std::int64_t> days;
    const std::int64_t wanted = periodsBetween(first, RuleDay(floorDivide(from, secondsPerDay)));
    for (auto distance = wanted / rule_.interval * rule_.interval;; distance += rule_.interval) {
        const auto span = period(first, distance);
        if (!span || span->begin * secondsPerDay > to) return Outcome::finished;
        if (!budget.takeSteps(span->steps)) return Outcome::tooMany;
        collectDays(rule_, span->firstDay, span->lastDay, days);
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
        if (day != checkedDay && !passesDayParts(rule_, RuleDay(day))) {
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
