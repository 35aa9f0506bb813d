#include "Event/StoredEventTimes.h"

namespace hbr {

std::string storedEventTimes(const platform::EKEvent& event, const Formatters& formatters) {
    const auto day = [&](platform::Date date) { return formatters.dateOnly().string(date); };
    const auto time = [&](platform::Date date) { return formatters.timeOnly().string(date); };
    const platform::Calendar& calendar = formatters.environment().calendar;
    const platform::Date lastInstant =
        event.endDate > event.startDate ? event.endDate.addingTimeInterval(-1) : event.endDate;
    const bool isOneDay = calendar.isSameDay(event.startDate, lastInstant);
    if (event.isAllDay) return day(event.startDate) + (isOneDay ? "" : " – " + day(lastInstant));
    if (event.startDate == event.endDate) return day(event.startDate) + " " + time(event.startDate);
    return day(event.startDate) + " " + time(event.startDate) + " – " +
           (isOneDay ? "" : day(event.endDate) + " ") + time(event.endDate);
}

}  // namespace hbr
