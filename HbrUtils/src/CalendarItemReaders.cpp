#include <HbrUtils/CalendarItemReaders.h>

#include <HbrUtils/Prefixes.h>

namespace hbr {

bool isDelegate(const platform::EKCalendar& calendar) {
    return calendar.source && calendar.source->isDelegate;
}

bool isSubscribedHolidayCalendar(const platform::EKCalendar& calendar) {
    return calendar.isSubscribedHolidayCalendar;
}

std::optional<std::string> ownerEmailAddress(const platform::EKCalendar& calendar) {
    constexpr std::string_view mailScheme = "mailto:";
    if (!calendar.source) return std::nullopt;
    for (const auto& address : calendar.source->ownerAddresses) {
        if (address.starts_with(mailScheme)) return std::string(deletingPrefix(address, mailScheme));
    }
    return std::nullopt;
}

bool hasAlerts(const platform::EKEvent& event) {
    return event.alarms && !event.alarms->empty();
}

double travelTime(const platform::EKEvent& event) {
    return event.travelTime.value_or(0);
}

}  // namespace hbr
