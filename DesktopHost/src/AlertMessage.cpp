#include "AlertMessage.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/DistanceTexts.h>
#include <HbrUtils/RelativeTimeTexts.h>

#include <cmath>

namespace hbr {

namespace {

constexpr double minute = 60;

std::string timeLine(const Event& event, const Formatters& formatters, const platform::ClockReading& clock) {
    if (isAnyReminder(event)) return formattedStartTimeAndDate(event, formatters, clock);
    return formattedTimeAndDate(event, formatters, clock);
}

/// "in 5 minutes", "now"; empty later. The last minute is not counted by the second, as each change is a
/// message to the desktop.
std::string beginsText(const Event& event, const Formatters& formatters,
                       const platform::ClockReading& clock) {
    if (!clock.hasReached(event.startDate)) {
        if (clock.wholeSecondsUntil(event.startDate) >= minute)
            return relativeText(event.startDate, clock, formatters);
        return formattedRelativeTime(clock.now().addingTimeInterval(minute), clock.now(), formatters);
    }
    return clock.hasReached(event.startDate.addingTimeInterval(minute))
               ? ""
               : L10n::TimeFormat::now(formatters.environment());
}

/// Not when that would be at once.
bool offersSnoozeUntilEvent(const Event& event, platform::Date now) {
    return event.startDate > now.addingTimeInterval(minute / 2);
}

}  // namespace

std::string alertTag(const Event& event) {
    return AlertInvocation::idOf(event, event.startDate);
}

bool isOver(const Event& event, const platform::ClockReading& clock) {
    return !isAnyReminder(event) && clock.isPast(event.endDate);
}

bool isUrgent(const Event& event, UrgentAlerts urgent, platform::Date now) {
    if (urgent != UrgentAlerts::soon) return urgent == UrgentAlerts::always;
    return event.startDate.timeIntervalSince(now) <= minute;
}

std::optional<std::int64_t> offeredSnooze(const UserSettingsStore& settings, const Event& event,
                                          platform::Date now) {
    for (const std::int64_t minutes : {settings.defaultSnooze1(), settings.defaultSnooze2()}) {
        if (minutes <= 0) continue;
        const auto end = now.addingTimeInterval(static_cast<double>(minutes) * minute);
        const bool endsWithStart = std::fabs(end.timeIntervalSince(event.startDate)) < minute / 2;
        if (!endsWithStart || !offersSnoozeUntilEvent(event, now)) return minutes;
    }
    return std::nullopt;
}

platform::DesktopNotifications::Notification alertMessage(const CoreServices& core, const Event& event,
                                                          const platform::ClockReading& clock) {
    const platform::Date now = clock.now();
    const Formatters& formatters = core.formatters();
    platform::DesktopNotifications::Notification message{
        .summary = titleOrUntitled(event, formatters.environment()),
        .body = beginsText(event, formatters, clock),
        .actions = {},
        .opensOnTap = true};
    message.body += (message.body.empty() ? "" : ", ") + timeLine(event, formatters, clock);
    if (event.location && !event.location->empty()) message.body += "\n" + *event.location;
    if (event.calendarName) message.body += "\n" + *event.calendarName;

    if (!event.videoConferenceLinks.empty())
        message.actions.push_back({alertAction::join, L10n::Ios::Event::join(formatters.environment())});
    if (const auto minutes = offeredSnooze(core.settings(), event, now)) {
        const auto length =
            formatters.durationFormatterForTimeOffset().string(static_cast<double>(*minutes) * minute);
        message.actions.push_back({alertAction::snooze, L10n::Ios::Notification::snoozeButtonTitle(
                                                            formatters.environment(), length.value_or(""))});
    }
    if (offersSnoozeUntilEvent(event, now))
        message.actions.push_back(
            {alertAction::untilEvent,
             L10n::Ios::Notification::snoozeUntilEventButtonTitle(formatters.environment())});
    return message;
}

}  // namespace hbr
