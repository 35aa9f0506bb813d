#include <HbrCore/Events/Attendance.h>

#include <HbrCore/Stores/HiddenOccurrencesStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <HbrUtils/CalendarItemReaders.h>

#include <algorithm>

namespace hbr {

using platform::EKParticipantStatus;

namespace {

bool counts(EKParticipantStatus answer, bool showOnlyAcceptedEvents) {
    switch (answer) {
        case EKParticipantStatus::accepted:
        case EKParticipantStatus::inProcess:
            return true;
        case EKParticipantStatus::pending:
        case EKParticipantStatus::tentative:
        case EKParticipantStatus::unknown:
            return !showOnlyAcceptedEvents;
        default:
            return false;
    }
}

}  // namespace

AttendanceSettings::AttendanceSettings(const UserSettingsStore& settings)
    : showOnlyEventsWithAlert(settings.showOnlyEventsWithAlert()),
      showOnlyAcceptedEvents(settings.showOnlyAcceptedEvents()),
      hiddenOccurrences(HiddenOccurrencesStore(settings.domains().shared).all()) {}

const platform::EKParticipant* currentUser(const platform::EKEvent& event) {
    if (!event.attendees) return nullptr;
    const auto user = std::ranges::find_if(*event.attendees, &platform::EKParticipant::isCurrentUser);
    return user == event.attendees->end() ? nullptr : &*user;
}

bool isAttending(const platform::EKEvent& event, const AttendanceSettings& settings) {
    const auto* user = currentUser(event);
    return !user || counts(user->participantStatus, settings.showOnlyAcceptedEvents);
}

bool shouldSchedule(const platform::EKEvent& event, const AttendanceSettings& settings) {
    if (event.isAllDay || event.status == platform::EKEventStatus::canceled) return false;
    if (!isAttending(event, settings) || settings.hiddenOccurrences.contains(event)) return false;
    return !settings.showOnlyEventsWithAlert || hasAlerts(event);
}

bool shouldSchedule(const platform::EKReminder& reminder) {
    if (reminder.isCompleted) return false;
    if (!reminder.startDateComponents && !reminder.dueDateComponents) return false;
    return reminder.alarms.has_value();
}

}  // namespace hbr
