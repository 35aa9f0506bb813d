#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <Foundation/Calendar.h>
#include <HbrCore/Events/EventSettings.h>
#include <HbrCore/Events/Reminder.h>
#include <HbrCore/Scheduling/AlertInvocation.h>
#include <HbrCore/Stores/EventSettingsStore.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace hbr {

class UserSettingsStore;

/// The settings that decide when and for what there are alerts, read once.
struct AlertSettings {
    std::int64_t timeOffsetSeconds = 60;
    bool includeTravelTime = false;
    bool showOnlyEventsWithAlert = false;
    bool showOnlyAcceptedEvents = false;
    bool showOnlyEventsWithVideoConference = false;

    static AlertSettings of(const UserSettingsStore& settings);
};

/// When the alert of a calendar event or task is due; nothing for an excluded event and for a moment
/// before now.
std::optional<platform::Date> alertDate(const Event& event, const AlertSettings& settings,
                                        const std::optional<EventSettings>& eventSettings,
                                        platform::Date now);

/// False for a calendar event without a conference link where only those with one are wanted.
bool hasWantedCall(const Event& event, const AlertSettings& settings);

/// Computes the alerts still to come at `now`, in the order of what it is given.
class AlertSchedule {
  public:
    AlertSchedule(const AlertSettings& settings, const EventSettingsStore& eventSettings,
                  const VideoConferenceLinkParser& parser, const platform::Calendar& calendar,
                  platform::Date now);

    std::vector<AlertInvocation> invocations(const std::vector<platform::EKEventRef>& events) const;
    std::vector<AlertInvocation> invocations(const std::vector<Reminder>& reminders) const;
    std::vector<AlertInvocation> invocations(const std::vector<platform::EKReminderRef>& reminders) const;

  private:
    std::optional<AlertInvocation> invocation(Event event) const;

    const AlertSettings settings_;
    const std::optional<EventSettingsStore::Settings> eventSettings_;
    const VideoConferenceLinkParser& parser_;
    const platform::Calendar& calendar_;
    const platform::Date now_;
};

}  // namespace hbr
