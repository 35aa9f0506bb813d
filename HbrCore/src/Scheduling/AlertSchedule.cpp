#include <HbrCore/Scheduling/AlertSchedule.h>

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>

#include <utility>

#include "EventConversions.h"

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

AlertSchedule::AlertSchedule(const AlertSettings& settings,
                             std::optional<EventSettingsStore::Settings> eventSettings,
                             const VideoConferenceLinkParser& parser, const platform::Calendar& calendar,
                             platform::Date now, EventConversions* conversions)
    : settings_(settings),
      eventSettings_(std::move(eventSettings)),
      parser_(parser),
      calendar_(calendar),
      now_(now),
      conversions_(conversions) {}

std::optional<platform::Date> AlertSchedule::dateOf(const Event& event) const {
    return alertDate(event, settings_, EventSettingsStore::find(eventSettings_, event.id), now_);
}

void AlertSchedule::append(const std::vector<platform::EKEventRef>& events,
                           std::vector<ScheduledAlert>& alerts) const {
    const AttendanceSettings attendance(settings_.showOnlyEventsWithAlert, settings_.showOnlyAcceptedEvents);
    for (const auto& record : events) {
        if (!shouldSchedule(*record, attendance)) continue;
        EventRef event = conversions_
                             ? conversions_->of(record)
                             : std::make_shared<const Event>(Event::fromCalendarEvent(*record, parser_));
        const auto date = dateOf(*event);
        if (!date) continue;
        if (!hasWantedCall(*event, settings_)) continue;
        alerts.push_back({*date, std::move(event)});
    }
}

void AlertSchedule::append(const std::vector<Reminder>& reminders,
                           std::vector<ScheduledAlert>& alerts) const {
    for (const Reminder& reminder : reminders) {
        const double offset = static_cast<double>(reminder.timeOffsetSeconds());
        const platform::Date date = reminder.date().addingTimeInterval(-offset);
        if (date > now_) {
            alerts.push_back({date, std::make_shared<const Event>(Event::fromReminder(reminder, parser_))});
        }
    }
}

void AlertSchedule::append(const std::vector<platform::EKReminderRef>& reminders,
                           std::vector<ScheduledAlert>& alerts) const {
    for (const auto& reminder : reminders) {
        if (!shouldSchedule(*reminder)) continue;
        auto event = Event::fromAppleReminder(*reminder, calendar_);
        const auto date = event ? dateOf(*event) : std::nullopt;
        if (date) alerts.push_back({*date, std::make_shared<const Event>(*std::move(event))});
    }
}

}  // namespace hbr
