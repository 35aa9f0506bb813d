#include <TimeAndText/Calendar.h>

#include "CivilDays.h"
#include "WholeSeconds.h"

namespace platform {
namespace {

std::int64_t dayNumber(const LocalTime& local) {
    return daysSince1970(local.year, local.month, local.day);
}

LocalTime midnightOf(const LocalTime& local) {
    return {.year = local.year, .month = local.month, .day = local.day};
}

/// The first whole second whose local date is `day` or later, after `early` and not after `late`.
std::int64_t firstSecondOfDay(const TimeZone& zone, std::int64_t day, std::int64_t early, std::int64_t late) {
    while (late - early > 1) {
        const std::int64_t middle = early + (late - early) / 2;
        if (dayNumber(zone.localTime(dateOfSeconds(middle))) < day) {
            early = middle;
        } else {
            late = middle;
        }
    }
    return late;
}

}  // namespace

DateComponents Calendar::components(Date moment) const {
    const LocalTime local = zone_.localTime(moment);
    return {.year = local.year,
            .month = local.month,
            .day = local.day,
            .hour = local.hour,
            .minute = local.minute,
            .second = local.second,
            .timeZone = std::nullopt};
}

std::optional<Date> Calendar::date(const DateComponents& components) const {
    if (!components.year) return std::nullopt;
    const LocalTime local{.year = *components.year,
                          .month = components.month.value_or(1),
                          .day = components.day.value_or(1),
                          .hour = components.hour.value_or(0),
                          .minute = components.minute.value_or(0),
                          .second = components.second.value_or(0)};
    return components.timeZone.value_or(zone_).date(local);
}

Date Calendar::addingDays(Date moment, int days) const {
    if (days == 0) return moment;
    const LocalTime moved = localTimeOf(secondsOf(zone_.localTime(moment)) + std::int64_t{days} * 86400);
    return zone_.date(moved).addingTimeInterval(fractionOfSecond(moment));
}

Date Calendar::addingMinutes(Date moment, int minutes) const {
    return moment.addingTimeInterval(minutes * 60.0);
}

Date Calendar::startOfDay(Date moment) const {
    const LocalTime midnight = midnightOf(zone_.localTime(moment));
    const Date start = zone_.date(midnight);
    if (!zone_.isInGap(midnight)) return start;
    // The reading's moment lies past the gap; the day began where the gap ends.
    const std::int64_t late = wholeSecondsSince1970(start);
    return dateOfSeconds(firstSecondOfDay(zone_, dayNumber(midnight), late - 86400, late));
}

bool Calendar::isSameDay(Date a, Date b) const {
    return daysBetween(a, b) == 0;
}

int Calendar::weekday(Date moment) const {
    return weekdayOfDays(dayNumber(zone_.localTime(moment))) + 1;
}

int Calendar::daysBetween(Date from, Date to) const {
    return static_cast<int>(dayNumber(zone_.localTime(to)) - dayNumber(zone_.localTime(from)));
}

}  // namespace platform
