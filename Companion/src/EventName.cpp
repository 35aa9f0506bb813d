#include "EventName.h"

#include "CompanionText.h"
#include "Console.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrUtils/DateOperations.h>

namespace hbr {

std::string titleOf(const Event& event, const platform::Environment& environment) {
    const std::string title = onOneLine(event.title.value_or(""));
    return title.empty() ? companionText(environment, "Event.untitled") : title;
}

std::string titleOf(const Event& event) {
    return titleOf(event, *platform::Environment::current());
}

std::string quotedTitle(const Event& event) {
    return companionText(*platform::Environment::current(), "Event.quoted", {titleOf(event)});
}

std::string timesText(const Event& event, const Formatters& formatters, const platform::ClockReading& clock) {
    if (!isAnyReminder(event)) return formattedTimeAndDate(event, formatters, clock);
    return clock.isSameDay(event.startDate, formatters.environment().calendar)
               ? formattedStartTime(event, formatters)
               : formattedStartTimeAndDate(event, formatters, clock);
}

}  // namespace hbr
