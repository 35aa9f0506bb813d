#pragma once

#include <CalendarStore/EKCalendarItem.h>

namespace hbr {

class UserSettingsStore;

/// The settings that decide which items count, read once.
struct AttendanceSettings {
    bool showOnlyEventsWithAlert = false;
    bool showOnlyAcceptedEvents = false;

    AttendanceSettings() = default;
    AttendanceSettings(bool onlyWithAlert, bool onlyAccepted)
        : showOnlyEventsWithAlert(onlyWithAlert), showOnlyAcceptedEvents(onlyAccepted) {}
    // Implicit, so that a store can be passed where its settings are meant.
    AttendanceSettings(const UserSettingsStore& settings);
};

/// The attendee who is the user; nullptr without attendees or when none is.
const platform::EKParticipant* currentUser(const platform::EKEvent& event);
/// True without attendees or when none is the user; else by the user's answer.
bool isAttending(const platform::EKEvent& event, const AttendanceSettings& settings);
/// Not all-day, not cancelled, attended, and with an alert where only those are wanted.
bool shouldSchedule(const platform::EKEvent& event, const AttendanceSettings& settings);
/// Not completed, with a start or due date and an alarm list (an empty one counts).
bool shouldSchedule(const platform::EKReminder& reminder);

}  // namespace hbr
