#include <HbrCore/Events/EventSettings.h>

namespace hbr {

using platform::DecodingError;
using platform::JsonValue;

bool EventSettings::isEqual(const EventSettings& to, bool excludingType) const {
    if (!excludingType) return *this == to;
    EventSettings sameType = to;
    sameType.type = type;
    return *this == sameType;
}

JsonValue JsonCoding<EventSettings>::encode(const EventSettings& settings) {
    JsonValue record = JsonValue::object();
    record.set("type", rawValue(settings.type))
        .set("isExcluded", settings.isExcluded)
        .set("usesCustomTimeOffset", settings.usesCustomTimeOffset)
        .set("timeOffsetSeconds", settings.timeOffsetSeconds);
    if (settings.defaultConferenceUrl) {
        record.set("defaultConferenceUrl", settings.defaultConferenceUrl->absoluteString());
    }
    return record;
}

EventSettings JsonCoding<EventSettings>::decode(const JsonValue& json) {
    const platform::KeyedDecoder record(json);
    const auto type = fromRawValue<Event::EventType>(record.string("type"));
    if (!type) throw DecodingError("type: unknown kind of event");
    EventSettings settings{.type = *type,
                           .isExcluded = record.boolean("isExcluded"),
                           .usesCustomTimeOffset = record.boolean("usesCustomTimeOffset"),
                           .timeOffsetSeconds = record.integer("timeOffsetSeconds")};
    if (const auto text = record.optionalString("defaultConferenceUrl")) {
        settings.defaultConferenceUrl = platform::Url::parse(*text);
        if (!settings.defaultConferenceUrl) throw DecodingError("defaultConferenceUrl: no URL");
    }
    return settings;
}

}  // namespace hbr
