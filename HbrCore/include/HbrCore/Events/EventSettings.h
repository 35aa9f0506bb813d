#pragma once

#include <HbrCore/Events/Event.h>
#include <HbrUtils/JsonCoding.h>
#include <TimeAndText/Url.h>

#include <cstdint>
#include <optional>

namespace hbr {

/// What the user chose for one event; kept per Event::id, so for a whole series.
struct EventSettings {
    Event::EventType type = Event::EventType::calendarEvent;
    /// Never pending, never alerted.
    bool isExcluded = false;
    bool usesCustomTimeOffset = false;
    /// Lead time in seconds; used when usesCustomTimeOffset is set.
    std::int64_t timeOffsetSeconds = 0;
    std::optional<platform::Url> defaultConferenceUrl = std::nullopt;

    static EventSettings defaultSettings(Event::EventType type) { return {.type = type}; }
    bool isEqual(const EventSettings& to, bool excludingType) const;

    friend bool operator==(const EventSettings&, const EventSettings&) = default;
};

template <>
struct JsonCoding<EventSettings> {
    static platform::JsonValue encode(const EventSettings& settings);
    static EventSettings decode(const platform::JsonValue& json);
};

}  // namespace hbr
