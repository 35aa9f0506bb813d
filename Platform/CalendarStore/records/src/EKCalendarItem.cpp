#include <CalendarStore/EKCalendarItem.h>

namespace platform {
namespace {

EKPropertyValue valueOf(const std::optional<std::string>& text) {
    return text ? EKPropertyValue(*text) : EKPropertyValue();
}

std::optional<EKPropertyValue> sharedValue(const EKCalendarItem& item, std::string_view key) {
    if (key == "title") return valueOf(item.title);
    if (key == "notes") return valueOf(item.notes);
    if (key == "location") return valueOf(item.location);
    return std::nullopt;
}

}  // namespace

EKPropertyValue EKEvent::value(std::string_view key) const {
    if (auto shared = sharedValue(*this, key)) return *shared;
    if (key == "startDate") return startDate;
    if (key == "endDate") return endDate;
    if (key == "travelTime" && travelTime) return *travelTime;
    return {};
}

EKPropertyValue EKReminder::value(std::string_view key) const {
    if (auto shared = sharedValue(*this, key)) return *shared;
    if (key == "dueDate" && dueDate) return *dueDate;
    return {};
}

}  // namespace platform
