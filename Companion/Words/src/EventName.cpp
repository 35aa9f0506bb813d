#include <Words/EventName.h>

#include <HbrUtils/DateOperations.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>

namespace hbr {

std::string titleText(const std::optional<std::string>& title, const platform::Environment& environment) {
    const std::string text = onOneLine(title.value_or(""));
    return text.empty() ? companionText(environment, "Event.untitled") : text;
}

std::string titleOf(const Event& event, const platform::Environment& environment) {
    return titleText(event.title, environment);
}

std::string quotedTitle(const Event& event, const platform::Environment& environment) {
    const std::string title = titleOf(event, environment);
    return companionText(environment, "Event.quoted", {title});
}

std::string timesText(const Event& event, const Formatters& formatters, const platform::ClockReading& clock) {
    if (!isAnyReminder(event)) return formattedTimeAndDate(event, formatters, clock);
    return clock.isSameDay(event.startDate, formatters.environment().calendar)
               ? formattedStartTime(event, formatters)
               : formattedStartTimeAndDate(event, formatters, clock);
}

}  // namespace hbr
