#include "AlertMessage.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>

namespace hbr {

namespace {

constexpr double minute = 60;

std::string timeLine(const Event& event, const Formatters& formatters, platform::Date now) {
    if (isAnyReminder(event)) return formattedStartTimeAndDate(event, formatters, now);
    return formattedTimeAndDate(event, formatters, now);
}

}  // namespace

std::string alertTag(const Event& event) {
    return AlertInvocation{.date = event.startDate, .event = event}.id();
}

bool isOver(const Event& event, platform::Date now) {
    return !isAnyReminder(event) && event.endDate < now;
}

platform::DesktopNotifications::Notification alertMessage(const CoreServices& core, const Event& event) {
    const platform::Date now = core.environment()->now();
    const Formatters& formatters = core.formatters();
    platform::DesktopNotifications::Notification message{
        .summary = event.title && !event.title->empty() ? *event.title : L10n::General::untitled(),
        .body = timeLine(event, formatters, now),
        .actions = {},
        .opensOnTap = true,
        .isUrgent = true};
    if (event.location && !event.location->empty()) message.body += "\n" + *event.location;
    if (event.calendarName) message.body += "\n" + *event.calendarName;

    if (!event.videoConferenceLinks.empty())
        message.actions.push_back({alertAction::join, L10n::Ios::Event::join()});
    if (const auto minutes = core.settings().defaultSnooze1(); minutes > 0) {
        const auto length =
            formatters.durationFormatterForTimeOffset().string(static_cast<double>(minutes) * minute);
        message.actions.push_back(
            {alertAction::snooze, L10n::Ios::Notification::snoozeButtonTitle(length.value_or(""))});
    }
    // Not when that would be at once.
    if (event.startDate > now.addingTimeInterval(minute / 2))
        message.actions.push_back(
            {alertAction::untilEvent, L10n::Ios::Notification::snoozeUntilEventButtonTitle()});
    return message;
}

}  // namespace hbr
