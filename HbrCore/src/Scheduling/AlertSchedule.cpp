#include <HbrCore/Scheduling/AlertSchedule.h>

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>

#include <utility>

namespace hbr {

AlertSettings AlertSettings::of(const UserSettingsStore& settings) {
    return {.timeOffsetSeconds = settings.timeOffsetSeconds(),
            .includeTravelTime = settings.includeTravelTime(),
            .showOnlyEventsWithAlert = settings.showOnlyEventsWithAlert(),
            .showOnlyAcceptedEvents = settings.showOnlyAcceptedEvents(),
            .showOnlyEventsWithVideoConference = settings.showOnlyEventsWithVideoConference()};
}

bool hasWantedCall(const Event& event, const AlertSettings& settings) {
    return !settings.showOnlyEventsWithVideoConference || !event.videoConferenceLinks.empty();
}

std::optional<platform::Date> alertDate(const Event& event, const AlertSettings& settings,
                                        const std::optional<EventSettings>& eventSettings,
                                        platform::Date now) {
    if (eventSettings && eventSettings->isExcluded) return std::nullopt;
    double offset = alertOffset(static_cast<double>(settings.timeOffsetSeconds), eventSettings);
    if (settings.includeTravelTime) offset += event.travelTime;
    const platform::Date alert = event.startDate.addingTimeInterval(-offset);
    return alert < now ? std::nullopt : std::optional(alert);
}

AlertSchedule::AlertSchedule(const AlertSettings& settings, const EventSettingsStore& eventSettings,
                             const VideoConferenceLinkParser& parser, const platform::Calendar& calendar,
                             platform::Date now)
    : settings_(settings),
      eventSettings_(eventSettings.customSettings()),
      parser_(parser),
      calendar_(calendar),
      now_(now) {}

std::optional<AlertInvocation> AlertSchedule::invocation(Event event) const {
    const auto alert = alertDate(event, settings_, EventSettingsStore::find(eventSettings_, event.id), now_);
    if (!alert) return std::nullopt;
    return AlertInvocation{.date = *alert, .event = std::move(event), .isSnooze = false};
}

std::vector<AlertInvocation> AlertSchedule::invocations(
    const std::vector<platform::EKEventRef>& events) const {
    const AttendanceSettings attendance(settings_.showOnlyEventsWithAlert, settings_.showOnlyAcceptedEvents);
    std::vector<AlertInvocation> alerts;
    for (const auto& event : events) {
        if (!shouldSchedule(*event, attendance)) continue;
        auto alert = invocation(Event::fromCalendarEvent(*event, parser_));
        if (!alert) continue;
        if (!hasWantedCall(alert->event, settings_)) continue;
        alerts.push_back(*std::move(alert));
    }
    return alerts;
}

std::vector<AlertInvocation> AlertSchedule::invocations(const std::vector<Reminder>& reminders) const {
    std::vector<AlertInvocation> alerts;
    for (const Reminder& reminder : reminders) {
        const double offset = static_cast<double>(reminder.timeOffsetSeconds());
        const platform::Date alert = reminder.date().addingTimeInterval(-offset);
        if (alert > now_) {
            alerts.push_back(
                {.date = alert, .event = Event::fromReminder(reminder, parser_), .isSnooze = false});
        }
    }
    return alerts;
}

std::vector<AlertInvocation> AlertSchedule::invocations(
    const std::vector<platform::EKReminderRef>& reminders) const {
    std::vector<AlertInvocation> alerts;
    for (const auto& reminder : reminders) {
        if (!shouldSchedule(*reminder)) continue;
        auto event = Event::fromAppleReminder(*reminder, calendar_);
        auto alert = event ? invocation(*std::move(event)) : std::nullopt;
        if (alert) alerts.push_back(*std::move(alert));
    }
    return alerts;
}

}  // namespace hbr
