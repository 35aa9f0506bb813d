#include <HbrCore/Events/EventJson.h>

namespace hbr {

using platform::JsonValue;

namespace {

std::string_view nameOf(ParticipantStatus status) {
    switch (status) {
        case ParticipantStatus::accepted:
            return "accepted";
        case ParticipantStatus::tentative:
            return "tentative";
        case ParticipantStatus::declined:
            return "declined";
        case ParticipantStatus::pending:
            return "pending";
        case ParticipantStatus::unknown:
            break;
    }
    return "unknown";
}

JsonValue linkJson(const VideoConferenceLink& link) {
    JsonValue service = JsonValue::object();
    service.set("id", link.service.id).set("name", link.service.name);
    JsonValue json = JsonValue::object();
    json.set("service", std::move(service)).set("url", link.url.absoluteString());
    return json;
}

JsonValue participantJson(const Event::ParticipantData& participant) {
    JsonValue json = JsonValue::object();
    json.setIfPresent("name", participant.name)
        .setIfPresent("email", participant.email)
        .set("isOrganizer", participant.isOrganizer)
        .set("status", nameOf(participant.status));
    return json;
}

template <class List, class Write>
JsonValue listJson(const List& list, Write write) {
    JsonValue json = JsonValue::array();
    for (const auto& element : list)
        json.append(write(element));
    return json;
}

}  // namespace

JsonValue eventJson(const Event& event) {
    JsonValue json = JsonValue::object();
    json.set("id", event.id)
        .setIfPresent("calendarItemIdentifier", event.calendarItemIdentifier)
        .set("type", rawValue(event.type))
        .set("startDate", platform::formatRfc3339(event.startDate))
        .set("endDate", platform::formatRfc3339(event.endDate))
        .setIfPresent("title", event.title)
        .setIfPresent("location", event.location)
        .set("isRecurring", event.isRecurring);
    if (event.occurrenceDate) json.set("occurrenceDate", platform::formatRfc3339(*event.occurrenceDate));
    json.setIfPresent("notes", event.notes)
        .set("color", event.color.hexString())
        .setIfPresent("calendarName", event.calendarName)
        .set("videoConferenceLinks", listJson(event.videoConferenceLinks, linkJson))
        .set("travelTime", event.travelTime)
        .set("participantsData", listJson(event.participantsData, participantJson));
    return json;
}

}  // namespace hbr
