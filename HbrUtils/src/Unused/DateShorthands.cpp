#include <HbrUtils/Unused/DateShorthands.h>

#include <HbrUtils/DateOperations.h>

namespace hbr {

using platform::Calendar;
using platform::Date;
using platform::DateComponents;

DateComponents components(Date date, const Calendar& calendar) {
    return calendar.components(date);
}

DateComponents dateComponents(int day, int month, int year, int hours, int minutes) {
    return {.year = year, .month = month, .day = day, .hour = hours, .minute = minutes};
}

bool isInFuture(Date date, Date now) {
    return date > now;
}

bool isInPast(Date date, Date now) {
    return date < now;
}

bool isInChristmasPeriod(Date date, const Calendar& calendar) {
    const int year = calendar.timeZone().localTime(date).year;
    return make(24, 12, year, 0, 0, calendar) <= date && date <= make(26, 12, year, 0, 0, calendar);
}

Date addingDays(Date date, int days, const Calendar& calendar) {
    return calendar.addingDays(date, days);
}

Date addingMinutes(Date date, int minutes, const Calendar& calendar) {
    return calendar.addingMinutes(date, minutes);
}

Date beginningOfDay(Date date, const Calendar& calendar) {
    return calendar.startOfDay(date);
}

}  // namespace hbr
