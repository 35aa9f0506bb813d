#include "ICalComponent.h"
#include "WrittenTime.h"

#include <Foundation/ContentLine.h>

namespace platform {
namespace {

std::optional<ItemDetails::Alarm> alarmOf(icalcomponent* component, const TimeZone& zone) {
    auto* action = icalcomponent_get_first_property(component, ICAL_ACTION_PROPERTY);
    if (action && equalIgnoringCase(rawValue(action), "NONE")) return std::nullopt;
    auto* trigger = icalcomponent_get_first_property(component, ICAL_TRIGGER_PROPERTY);
    if (!trigger) return std::nullopt;
    const auto value = rawValue(trigger);
    ItemDetails::Alarm alarm;
    if (const auto duration = parseDuration(value)) {
        alarm.offset = duration->approximateSeconds();
        auto* related = icalproperty_get_first_parameter(trigger, ICAL_RELATED_PARAMETER);
        alarm.fromEnd = related && icalparameter_get_related(related) == ICAL_RELATED_END;
        return alarm;
    }
    const auto time = parseWrittenTime(value);
    if (!time) return std::nullopt;
    alarm.absoluteDate = (time->isUtc ? TimeZone::utc() : zone).date(time->local);
    return alarm;
}

}  // namespace

void readAlarms(icalcomponent* component, const TimeZone& zone, ItemDetails& details) {
    for (auto* inner = icalcomponent_get_first_component(component, ICAL_VALARM_COMPONENT); inner;
         inner = icalcomponent_get_next_component(component, ICAL_VALARM_COMPONENT)) {
        auto alarm = alarmOf(inner, zone);
        if (!alarm) continue;
        if (!details.alarms) details.alarms.emplace();
        details.alarms->push_back(std::move(*alarm));
    }
}

}  // namespace platform
