#include <HbrCore/Events/EventTiming.h>

namespace hbr {

namespace {
constexpr double finishedAfter = 1800;
}

bool isFinished(const Event& event, platform::Date now) {
    return now >= event.endDate.addingTimeInterval(finishedAfter);
}

bool isCurrentEvent(const Event& event, const platform::ClockReading& clock) {
    const bool hasBegun = clock.hasReached(event.startDate), isOver = clock.isPast(event.endDate);
    return hasBegun && !isOver;
}

bool isAnyReminder(const Event& event) {
    return event.type != Event::EventType::calendarEvent;
}

double timeLeft(const Event& event, platform::Date now) {
    return isCurrentEvent(event, now) ? event.endDate.timeIntervalSince(now) : 0;
}

double eventProgress(const Event& event, const platform::ClockReading& clock) {
    if (!isCurrentEvent(event, clock)) return 0;
    const double length = event.endDate.timeIntervalSince(event.startDate);
    if (length <= 0) return 1;
    constexpr double minute = 60;
    clock.notesNextCount(event.endDate, minute);
    return clock.now().timeIntervalSince(event.startDate) / length;
}

bool startsWithin(const Event& event, double timeinterval, platform::Date relativeTo) {
    return event.startDate > relativeTo && event.startDate < relativeTo.addingTimeInterval(timeinterval);
}

bool isInFuture(const Event& event, const platform::ClockReading& relativeTo) {
    return !relativeTo.hasReached(event.startDate);
}

double alertOffset(double defaultTimeOffset, const std::optional<EventSettings>& eventSettings) {
    if (!eventSettings || !eventSettings->usesCustomTimeOffset) return defaultTimeOffset;
    return static_cast<double>(eventSettings->timeOffsetSeconds);
}

bool isPending(const Event& event, double defaultTimeOffset,
               const std::optional<EventSettings>& eventSettings, const platform::ClockReading& clock) {
    if (eventSettings && eventSettings->isExcluded) return false;
    const double offset = alertOffset(defaultTimeOffset, eventSettings);
    const bool hasAlerted = clock.isPast(event.startDate.addingTimeInterval(-offset));
    return hasAlerted && !clock.isPast(event.startDate);
}

std::optional<VideoConferenceLink> defaultVideoConferenceLink(
    const Event& event, const std::optional<EventSettings>& eventSettings) {
    const auto& links = event.videoConferenceLinks;
    if (links.size() == 1) return links.front();
    if (!eventSettings || !eventSettings->defaultConferenceUrl) return std::nullopt;
    for (const auto& link : links) {
        if (link.url == *eventSettings->defaultConferenceUrl) return link;
    }
    return std::nullopt;
}

}  // namespace hbr
