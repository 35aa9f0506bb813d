#pragma once

#include <CalendarStore/EKCalendar.h>
#include <CalendarStore/EKCalendarItem.h>

#include <optional>
#include <string>

// Facts about calendars and events, with the fallbacks that hold where a source does not know them.
namespace hbr {

bool isDelegate(const platform::EKCalendar& calendar);
bool isSubscribedHolidayCalendar(const platform::EKCalendar& calendar);
/// The first of the source's addresses that is a mail address, without "mailto:".
std::optional<std::string> ownerEmailAddress(const platform::EKCalendar& calendar);
/// A list without alarms and no list are the same.
bool hasAlerts(const platform::EKEvent& event);
/// Seconds; 0 when the event has none.
double travelTime(const platform::EKEvent& event);

}  // namespace hbr
