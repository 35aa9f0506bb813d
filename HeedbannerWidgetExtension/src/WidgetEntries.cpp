#include <HeedbannerWidgetExtension/WidgetEntries.h>

#include <HbrCore/Events/EventJson.h>
#include <HbrCore/Events/EventTexts.h>
#include <TimeAndText/DateFormatter.h>

#include <span>

namespace hbr {

using platform::JsonValue;

namespace {

JsonValue listJson(platform::Date date, const std::vector<Event>& events) {
    JsonValue list = JsonValue::array();
    for (const Event& event : events)
        list.append(eventJson(event));
    JsonValue json = JsonValue::object();
    json.set("date", platform::formatRfc3339(date)).set("events", std::move(list));
    return json;
}

std::string lines(platform::Date date, std::span<const Event> events,
                  const platform::Environment& environment) {
    using Style = platform::DateFormatter::Style;
    const auto times = platform::DateFormatter::withStyles(environment.locale, environment.calendar,
                                                           Style::medium, Style::short_);
    std::string text = times.string(date);
    if (events.empty()) text += "\n  -";
    for (const Event& event : events) {
        text += "\n  " + times.string(event.startDate) + "  " + titleOrUntitled(event, environment);
        if (event.calendarName) text += "  [" + *event.calendarName + "]";
    }
    return text;
}

}  // namespace

JsonValue entryJson(const NextEventEntry& entry) {
    JsonValue json = JsonValue::object();
    json.set("date", platform::formatRfc3339(entry.date));
    json.set("event", entry.event ? eventJson(*entry.event) : JsonValue(nullptr));
    return json;
}

JsonValue entryJson(const UpcomingEventsEntry& entry) {
    return listJson(entry.date, entry.events);
}
JsonValue entryJson(const CurrentEventsEntry& entry) {
    return listJson(entry.date, entry.events);
}

std::string entryText(const NextEventEntry& entry, const platform::Environment& environment) {
    const auto event = entry.event ? std::span(&*entry.event, 1) : std::span<const Event>();
    return lines(entry.date, event, environment);
}

std::string entryText(const UpcomingEventsEntry& entry, const platform::Environment& environment) {
    return lines(entry.date, entry.events, environment);
}

std::string entryText(const CurrentEventsEntry& entry, const platform::Environment& environment) {
    return lines(entry.date, entry.events, environment);
}

}  // namespace hbr
