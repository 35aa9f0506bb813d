#include <HbrCore/Events/Event.h>

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/Reminder.h>
#include <HbrUtils/CalendarItemReaders.h>
#include <HbrUtils/Colors.h>
#include <Values/OrderedSet.h>

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

constexpr std::string_view emailMark = "email = ";

std::optional<std::string> emailFromDescription(const std::string& description) {
    const auto mark = description.find(emailMark);
    if (mark == std::string::npos) return std::nullopt;
    const auto start = mark + emailMark.size();
    const auto end = std::min(description.find(';', start), description.find(emailMark, start));
    return description.substr(start, end == std::string::npos ? end : end - start);
}

std::optional<std::string> email(const platform::EKParticipant& participant) {
    auto specifier = participant.resourceSpecifier();
    if (specifier && !specifier->starts_with('/') && participant.scheme() == "mailto") return specifier;
    return emailFromDescription(participant.description());
}

Event::ParticipantData participantData(const platform::EKParticipant& participant) {
    return {.name = participant.name,
            .email = email(participant),
            .contactPredicate = participant.contactPredicate(),
            .isOrganizer = participant.participantRole == platform::EKParticipantRole::chair,
            .status = participantStatus(participant.participantStatus)};
}

std::vector<Event::ParticipantData> participants(const platform::EKEvent& event) {
    std::vector<Event::ParticipantData> list;
    list.reserve((event.organizer ? 1 : 0) + (event.attendees ? event.attendees->size() : 0));
    if (event.organizer) list.push_back(participantData(*event.organizer));
    if (event.attendees) {
        for (const auto& attendee : *event.attendees)
            list.push_back(participantData(attendee));
    }
    return list;
}

std::vector<VideoConferenceLink> conferenceLinks(const platform::EKEvent& event,
                                                 const VideoConferenceLinkParser& parser) {
    platform::OrderedSet<VideoConferenceLink> links;
    for (const auto* text : {&event.notes, &event.location, &event.url}) {
        if (!*text) continue;
        for (auto& link : parser.parse(**text))
            links.insert(std::move(link));
    }
    return std::move(links).elements();
}

}  // namespace

std::string_view rawValue(Event::EventType type) {
    switch (type) {
        case Event::EventType::calendarEvent:
            return "calendarEvent";
        case Event::EventType::appleReminder:
            return "appleReminder";
        case Event::EventType::hbrReminder:
            return "hbrReminder";
    }
    return {};
}

template <>
std::optional<Event::EventType> fromRawValue<Event::EventType>(std::string_view text) {
    using enum Event::EventType;
    for (auto type : {calendarEvent, appleReminder, hbrReminder}) {
        if (rawValue(type) == text) return type;
    }
    return std::nullopt;
}

Event Event::fromCalendarEvent(const platform::EKEvent& event, const VideoConferenceLinkParser& parser) {
    return {.id = event.eventIdentifier,
            .calendarItemIdentifier = event.calendarItemIdentifier,
            .type = EventType::calendarEvent,
            .startDate = event.startDate,
            .endDate = event.endDate,
            .title = event.title,
            .location = event.location,
            .isRecurring = event.hasRecurrenceRules,
            .occurrenceDate = event.occurrenceDate,
            .notes = event.notes,
            .color = event.calendar ? event.calendar->color : Colors::primary(),
            .calendarName = event.calendar ? std::optional(event.calendar->title) : std::nullopt,
            .videoConferenceLinks = conferenceLinks(event, parser),
            .travelTime = hbr::travelTime(event),
            .participantsData = participants(event)};
}

std::optional<Event> Event::fromAppleReminder(const platform::EKReminder& reminder,
                                              const platform::Calendar& calendar) {
    if (!reminder.dueDateComponents) return std::nullopt;
    const auto due = calendar.date(*reminder.dueDateComponents);
    if (!due) return std::nullopt;
    return Event{.id = reminder.calendarItemIdentifier,
                 .calendarItemIdentifier = reminder.calendarItemIdentifier,
                 .type = EventType::appleReminder,
                 .startDate = *due,
                 .endDate = *due,
                 .title = reminder.title,
                 .location = reminder.location,
                 .isRecurring = reminder.hasRecurrenceRules,
                 .occurrenceDate = std::nullopt,
                 .notes = reminder.notes,
                 .color = reminder.calendar ? reminder.calendar->color : Colors::primary(),
                 .calendarName = reminder.calendar ? std::optional(reminder.calendar->title) : std::nullopt,
                 .videoConferenceLinks = {},
                 .travelTime = 0,
                 .participantsData = {}};
}

Event Event::fromReminder(const Reminder& reminder, const VideoConferenceLinkParser& parser) {
    std::vector<VideoConferenceLink> links;
    for (const auto* text : {&reminder.notes(), &reminder.title()}) {
        if (!*text) continue;
        for (auto& link : parser.parse(**text))
            links.push_back(std::move(link));
    }
    return {.id = reminder.id(),
            .calendarItemIdentifier = std::nullopt,
            .type = EventType::hbrReminder,
            .startDate = reminder.date(),
            .endDate = reminder.date(),
            .title = reminder.title(),
            .location = std::nullopt,
            .isRecurring = false,
            .occurrenceDate = std::nullopt,
            .notes = reminder.notes(),
            .color = Colors::primary(),
            .calendarName = std::nullopt,
            .videoConferenceLinks = std::move(links),
            .travelTime = 0,
            .participantsData = {}};
}

std::string Event::debugDescription() const {
    return "start: " + startDate.description() + ", end: " + endDate.description() +
           ", title: " + title.value_or("(none)") + ", location: " + location.value_or("(none)") +
           ", recurring: " + (isRecurring ? "true" : "false");
}

}  // namespace hbr
