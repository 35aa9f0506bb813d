#include <HbrUtils/DateOperations.h>

#include <cmath>

namespace hbr {

using platform::Calendar;
using platform::Date;

Date make(int day, int month, int year, int hours, int minutes, const Calendar& calendar) {
    return calendar.timeZone().date(
        {.year = year, .month = month, .day = day, .hour = hours, .minute = minutes, .second = 0});
}

Date makeToday(int hours, int minutes, const Calendar& calendar, Date now) {
    const auto today = calendar.timeZone().localTime(now);
    return make(today.day, today.month, today.year, hours, minutes, calendar);
}

bool isOnSameDay(Date date, Date as, const Calendar& calendar) {
    return calendar.isSameDay(date, as);
}

bool isToday(Date date, const Calendar& calendar, Date now) {
    return isOnSameDay(date, now, calendar);
}

bool isTomorrow(Date date, Date relativeTo, const Calendar& calendar) {
    return calendar.isSameDay(date, calendar.addingDays(relativeTo, 1));
}

Date endOfDay(Date date, const Calendar& calendar) {
    auto last = calendar.timeZone().localTime(date);
    last.hour = 23;
    last.minute = last.second = 59;
    if (!calendar.timeZone().isInGap(last)) return calendar.timeZone().date(last);
    // The clock left out the end of the day.
    const Date beginning = calendar.startOfDay(date);
    return calendar.startOfDay(calendar.addingDays(beginning, 1)).addingTimeInterval(-1);
}

// By subtraction: made again from its reading, a moment in the second of two equal hours would move to the
// first.
Date removingSeconds(Date date, const Calendar& calendar) {
    const int second = calendar.timeZone().localTime(date).second;
    return Date(std::floor(date.timeIntervalSinceReferenceDate()) - second);
}

Date nextFullHour(Date date, const Calendar& calendar) {
    auto local = calendar.timeZone().localTime(date);
    ++local.hour;
    local.minute = 0;
    local.second = 0;
    return calendar.timeZone().date(local);
}

}  // namespace hbr
