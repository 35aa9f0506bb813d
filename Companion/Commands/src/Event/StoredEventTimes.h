#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrUtils/Formatters.h>

#include <string>

namespace hbr {

/// Day and times from start to end, only days for an all-day event; nothing relative to now.
std::string storedEventTimes(const platform::EKEvent& event, const Formatters& formatters);

}  // namespace hbr
