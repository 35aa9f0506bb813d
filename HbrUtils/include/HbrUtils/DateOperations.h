#pragma once

#include <TimeAndText/Calendar.h>

// Questions about dates and steps between them, by the days and clock of the calendar's zone. Pure. Where a
// reading of the clock does not exist or exists twice, the rules of platform::TimeZone hold.
namespace hbr {

/// Second 0.
platform::Date make(int day, int month, int year, int hours, int minutes, const platform::Calendar& calendar);
platform::Date makeToday(int hours, int minutes, const platform::Calendar& calendar, platform::Date now);

bool isOnSameDay(platform::Date date, platform::Date as, const platform::Calendar& calendar);
bool isToday(platform::Date date, const platform::Calendar& calendar, platform::Date now);
bool isTomorrow(platform::Date date, platform::Date relativeTo, const platform::Calendar& calendar);

/// 23:59:59: the first one where the day's last hour comes twice, and the last second that there is where the
/// clock leaves it out.
platform::Date endOfDay(platform::Date date, const platform::Calendar& calendar);
/// The whole minute that the date lies in.
platform::Date removingSeconds(platform::Date date, const platform::Calendar& calendar);
/// From 23:xx it is the next day's midnight; a full hour gives the next one.
platform::Date nextFullHour(platform::Date date, const platform::Calendar& calendar);

}  // namespace hbr
