#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>
#include <HbrCore/Events/ParticipantStatus.h>
#include <HbrCore/RawValue.h>
#include <TimeAndText/Date.h>
#include <Values/Color.h>
#include <Values/ContactPredicate.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

class VideoConferenceLinkParser;
class Reminder;

/// One calendar event, task or own reminder as the rest of the system sees it. A value.
struct Event {
    /// Stored as its text.
    enum class EventType { calendarEvent, appleReminder, hbrReminder };

    struct ParticipantData {
        std::optional<std::string> name;
        std::optional<std::string> email;
        platform::ContactPredicate contactPredicate;
        /// Has the chair role; being the organizer alone does not set it.
        bool isOrganizer = false;
        ParticipantStatus status = ParticipantStatus::unknown;

        friend bool operator==(const ParticipantData&, const ParticipantData&) = default;
    };

    /// All occurrences of a series share it.
    std::string id;
    std::optional<std::string> calendarItemIdentifier;
    EventType type = EventType::calendarEvent;
    platform::Date startDate;
    /// For reminders equal to startDate.
    platform::Date endDate;
    std::optional<std::string> title;
    std::optional<std::string> location;
    bool isRecurring = false;
    std::optional<platform::Date> occurrenceDate;
    std::optional<std::string> notes;
    platform::Color color;
    std::optional<std::string> calendarName;
    /// Links of notes, location and URL, each once (own reminders: notes, then title, repeats kept).
    std::vector<VideoConferenceLink> videoConferenceLinks;
    /// Seconds; 0 when there is none.
    double travelTime = 0;
    /// The organizer first, then the attendees; one who is both is listed twice.
    std::vector<ParticipantData> participantsData;

    static Event fromCalendarEvent(const platform::EKEvent& event, const VideoConferenceLinkParser& parser);
    /// Nothing without a usable due date.
    static std::optional<Event> fromAppleReminder(const platform::EKReminder& reminder,
                                                  const platform::Calendar& calendar);
    static Event fromReminder(const Reminder& reminder, const VideoConferenceLinkParser& parser);

    std::string debugDescription() const;

    friend bool operator==(const Event&, const Event&) = default;
};

std::string_view rawValue(Event::EventType type);
template <>
std::optional<Event::EventType> fromRawValue<Event::EventType>(std::string_view text);

}  // namespace hbr
