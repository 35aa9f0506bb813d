#include <HbrCore/Events/EventTiming.h>

namespace hbr {

namespace {
constexpr double finishedAfter = 1800;
}

bool isFinished(const Event& event, platform::Date now) {
    return now >= event.endDate.addingTimeInterval(finishedAfter);
}

bool isCurrentEvent(const Event& event, platform::Date now) {
    return event.startDate <= now && now <= event.endDate;
}

bool isAnyReminder(const Event& event) {
    return event.type != Event::EventType::calendarEvent;
}

double timeLeft(const Event& event, platform::Date now) {
    return isCurrentEvent(event, now) ? event.endDate.timeIntervalSince(now) : 0;
}

double eventProgress(const Event& event, platform::Date now) {
    if (!isCurrentEvent(event, now)) return 0;
    const double length = event.endDate.timeIntervalSince(event.startDate);
    return length > 0 ? now.timeIntervalSince(event.startDate) / length : 1;
}

bool startsWithin(const Event& event, double timeinterval, platform::Date relativeTo) {
    return event.startDate > relativeTo && event.startDate < relativeTo.addingTimeInterval(timeinterval);
}

bool isInFuture(const Event& event, platform::Date relativeTo) {
    return event.startDate > relativeTo;
}

double alertOffset(double defaultTimeOffset, const std::optional<EventSettings>& eventSettings) {
    if (!eventSettings || !eventSettings->usesCustomTimeOffset) return defaultTimeOffset;
    return static_cast<double>(eventSettings->timeOffsetSeconds);
}

bool isPending(const Event& event, double defaultTimeOffset,
               const std::optional<EventSettings>& eventSettings, platform::Date now) {
    if (eventSettings && eventSettings->isExcluded) return false;
    const double offset = alertOffset(defaultTimeOffset, eventSettings);
    return event.startDate.addingTimeInterval(-offset) < now && now <= event.startDate;
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
