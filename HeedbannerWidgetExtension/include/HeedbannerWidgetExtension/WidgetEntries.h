#pragma once

#include <HbrCore/Events/Event.h>
#include <System/Environment.h>
#include <TimeAndText/Date.h>
#include <Values/JsonValue.h>

#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// The event to count down to; absent when none comes up.
struct NextEventEntry {
    platform::Date date;
    std::optional<Event> event;

    friend bool operator==(const NextEventEntry&, const NextEventEntry&) = default;
};

struct UpcomingEventsEntry {
    platform::Date date;
    std::vector<Event> events;

    friend bool operator==(const UpcomingEventsEntry&, const UpcomingEventsEntry&) = default;
};

struct CurrentEventsEntry {
    platform::Date date;
    std::vector<Event> events;

    friend bool operator==(const CurrentEventsEntry&, const CurrentEventsEntry&) = default;
};

/// {"date", "event"} with null for no event, {"date", "events"}.
platform::JsonValue entryJson(const NextEventEntry& entry);
platform::JsonValue entryJson(const UpcomingEventsEntry& entry);
platform::JsonValue entryJson(const CurrentEventsEntry& entry);

/// For people at a terminal: the entry's time, then a line an event, in the user's zone and language.
std::string entryText(const NextEventEntry& entry, const platform::Environment& environment);
std::string entryText(const UpcomingEventsEntry& entry, const platform::Environment& environment);
std::string entryText(const CurrentEventsEntry& entry, const platform::Environment& environment);

}  // namespace hbr
