#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/EventSettings.h>
#include <HbrCore/Events/Reminder.h>
#include <HbrCore/Scheduling/AlertInvocation.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <TimeAndText/Calendar.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace hbr {

class EventConversions;
class UserSettingsStore;

/// The settings that decide when and for what there are alerts, read once.
struct AlertSettings {
    std::int64_t timeOffsetSeconds = 60;
    bool includeTravelTime = false;
    bool showOnlyEventsWithAlert = false;
    bool showOnlyAcceptedEvents = false;
    bool showOnlyEventsWithVideoConference = false;
    HiddenOccurrences hiddenOccurrences = {};

    static AlertSettings of(const UserSettingsStore& settings);
    AttendanceSettings attendance() const {
        return {showOnlyEventsWithAlert, showOnlyAcceptedEvents, hiddenOccurrences};
    }
};

/// When the alert of a calendar event or task is due; nothing for an excluded event and for a moment
/// before now.
std::optional<platform::Date> alertDate(const Event& event, const AlertSettings& settings,
                                        const std::optional<EventSettings>& eventSettings,
                                        platform::Date now);

/// False for a calendar event without a conference link where only those with one are wanted.
bool hasWantedCall(const Event& event, const AlertSettings& settings);

/// Computes the alerts still to come at `now`, in the order of what it is given, and appends them. What lies
/// ahead while its alert is due or was is appended to `insideLead`, where that is wanted.
class AlertSchedule {
  public:
    /// With `conversions`, what was made of an event before is taken from there.
    AlertSchedule(const AlertSettings& settings, std::optional<EventSettingsStore::Settings> eventSettings,
                  const VideoConferenceLinkParser& parser, const platform::Calendar& calendar,
                  platform::Date now, EventConversions* conversions = nullptr);

    void append(const std::vector<platform::EKEventRef>& events, std::vector<AlertInvocation>& alerts,
                EventRefs* insideLead = nullptr) const;
    void append(const std::vector<Reminder>& reminders, std::vector<AlertInvocation>& alerts,
                EventRefs* insideLead = nullptr) const;
    void append(const std::vector<platform::EKReminderRef>& reminders,
                std::vector<AlertInvocation>& alerts) const;

  private:
    /// When the alert of an event or task is due or was; nothing for an excluded one.
    std::optional<platform::Date> dateOf(const Event& event) const;

    const AlertSettings settings_;
    const std::optional<EventSettingsStore::Settings> eventSettings_;
    const VideoConferenceLinkParser& parser_;
    const platform::Calendar& calendar_;
    const platform::Date now_;
    EventConversions* const conversions_;
};

}  // namespace hbr
