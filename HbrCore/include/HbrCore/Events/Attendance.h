#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/HiddenOccurrences.h>

#include <utility>

namespace hbr {

class UserSettingsStore;

/// The settings that decide which items are listed, read once.
struct AttendanceSettings {
    bool showOnlyEventsWithAlert = false;
    bool showOnlyAcceptedEvents = false;
    HiddenOccurrences hiddenOccurrences;

    AttendanceSettings() = default;
    AttendanceSettings(bool onlyWithAlert, bool onlyAccepted, HiddenOccurrences hidden = {})
        : showOnlyEventsWithAlert(onlyWithAlert),
          showOnlyAcceptedEvents(onlyAccepted),
          hiddenOccurrences(std::move(hidden)) {}
    // Implicit, so that a store can be passed where its settings are meant.
    AttendanceSettings(const UserSettingsStore& settings);
};

/// The attendee who is the user; nullptr without attendees or when none is.
const platform::EKParticipant* currentUser(const platform::EKEvent& event);
/// True without attendees or when none is the user; else by the user's answer.
bool isAttending(const platform::EKEvent& event, const AttendanceSettings& settings);
/// Not all-day, not cancelled, not hidden by itself, attended, and with an alert where only those are wanted.
/// Every list and alert of calendar events asks this.
bool shouldSchedule(const platform::EKEvent& event, const AttendanceSettings& settings);
/// Not completed, with a start or due date and an alarm list (an empty one is enough).
bool shouldSchedule(const platform::EKReminder& reminder);

}  // namespace hbr
