#pragma once

#include <TimeAndText/Calendar.h>

// The rest of DateOperations.h. Pure.
namespace hbr {

/// Year to second; no fraction.
platform::DateComponents components(platform::Date date, const platform::Calendar& calendar);
platform::DateComponents dateComponents(int day, int month, int year, int hours, int minutes);

bool isInFuture(platform::Date date, platform::Date now);
bool isInPast(platform::Date date, platform::Date now);
/// 24 and 25 December and the first instant of the 26th.
bool isInChristmasPeriod(platform::Date date, const platform::Calendar& calendar);

/// Keeps the wall clock.
platform::Date addingDays(platform::Date date, int days, const platform::Calendar& calendar);
/// Elapsed time.
platform::Date addingMinutes(platform::Date date, int minutes, const platform::Calendar& calendar);
platform::Date beginningOfDay(platform::Date date, const platform::Calendar& calendar);

}  // namespace hbr
