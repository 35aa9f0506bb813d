#include <HbrCore/Scheduling/AlertSchedule.h>

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/HiddenOccurrencesStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>

#include <utility>

#include "EventConversions.h"

namespace hbr {

AlertSettings AlertSettings::of(const UserSettingsStore& settings) {
    return {.timeOffsetSeconds = settings.timeOffsetSeconds(),
            .includeTravelTime = settings.includeTravelTime(),
            .showOnlyEventsWithAlert = settings.showOnlyEventsWithAlert(),
            .showOnlyAcceptedEvents = settings.showOnlyAcceptedEvents(),
            .showOnlyEventsWithVideoConference = settings.showOnlyEventsWithVideoConference(),
            .hiddenOccurrences = HiddenOccurrencesStore(settings.domains().shared).all()};
}

bool hasWantedCall(const Event& event, const AlertSettings& settings) {
    return !settings.showOnlyEventsWithVideoConference || !event.videoConferenceLinks.empty();
}

namespace {

std::optional<platform::Date> dueDate(const Event& event, const AlertSettings& settings,
                                      const std::optional<EventSettings>& eventSettings) {
    if (eventSettings && eventSettings->isExcluded) return std::nullopt;
    double offset = alertOffset(static_cast<double>(settings.timeOffsetSeconds), eventSettings);
    if (settings.includeTravelTime) offset += event.travelTime;
    return event.startDate.addingTimeInterval(-offset);
}

}  // namespace

std::optional<platform::Date> alertDate(const Event& event, const AlertSettings& settings,
                                        const std::optional<EventSettings>& eventSettings,
                                        platform::Date now) {
    const auto alert = dueDate(event, settings, eventSettings);
    return alert && *alert < now ? std::nullopt : alert;
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
    return dueDate(event, settings_, EventSettingsStore::find(eventSettings_, event.id));
}

void AlertSchedule::append(const std::vector<platform::EKEventRef>& events,
                           std::vector<AlertInvocation>& alerts, EventRefs* insideLead) const {
    const AttendanceSettings attendance = settings_.attendance();
    for (const auto& record : events) {
        if (!shouldSchedule(*record, attendance)) continue;
        EventRef event = conversions_
                             ? conversions_->of(record)
                             : std::make_shared<const Event>(Event::fromCalendarEvent(*record, parser_));
        const auto date = dateOf(*event);
        if (!date || !hasWantedCall(*event, settings_)) continue;
        if (insideLead && *date <= now_ && event->startDate > now_) insideLead->push_back(event);
        if (*date >= now_) alerts.push_back({*date, std::move(event)});
    }
}

void AlertSchedule::append(const std::vector<Reminder>& reminders, std::vector<AlertInvocation>& alerts,
                           EventRefs* insideLead) const {
    for (const Reminder& reminder : reminders) {
        const double offset = static_cast<double>(reminder.timeOffsetSeconds());
        const platform::Date date = reminder.date().addingTimeInterval(-offset);
        if (date <= now_ && (!insideLead || reminder.date() <= now_)) continue;
        auto event = std::make_shared<const Event>(Event::fromReminder(reminder, parser_));
        if (date > now_) {
            alerts.push_back({date, std::move(event)});
        } else {
            insideLead->push_back(std::move(event));
        }
    }
}

void AlertSchedule::append(const std::vector<platform::EKReminderRef>& reminders,
                           std::vector<AlertInvocation>& alerts) const {
    for (const auto& reminder : reminders) {
        if (!shouldSchedule(*reminder)) continue;
        EventRef event;
        if (conversions_) {
            event = conversions_->of(reminder);
        } else if (auto made = Event::fromAppleReminder(*reminder, calendar_)) {
            event = std::make_shared<const Event>(*std::move(made));
        }
        const auto date = event ? dateOf(*event) : std::nullopt;
        if (date && *date >= now_) alerts.push_back({*date, std::move(event)});
    }
}

}  // namespace hbr
