#include "ItemAlarms.h"

#include "WrittenTime.h"

namespace platform {

std::optional<ItemDetails::Alarm> alarmOf(const std::vector<ContentLine>& lines, const TimeZone& zone) {
    const auto* action = firstNamed(lines, "ACTION");
    if (action && equalIgnoringCase(action->value, "NONE")) return std::nullopt;
    const auto* trigger = firstNamed(lines, "TRIGGER");
    if (!trigger) return std::nullopt;
    ItemDetails::Alarm alarm;
    if (const auto duration = parseDuration(trigger->value)) {
        alarm.offset = duration->approximateSeconds();
        const auto related = trigger->parameter("RELATED");
        alarm.fromEnd = related && equalIgnoringCase(*related, "END");
        return alarm;
    }
    const auto time = parseWrittenTime(trigger->value);
    if (!time) return std::nullopt;
    alarm.absoluteDate = (time->isUtc ? TimeZone::utc() : zone).date(time->local);
    return alarm;
}

}  // namespace platform
