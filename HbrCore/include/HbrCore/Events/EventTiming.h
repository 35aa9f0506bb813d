#pragma once

#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/EventSettings.h>
#include <TimeAndText/ClockReading.h>
#include <TimeAndText/Date.h>

#include <optional>

// Questions about an event at a moment. Pure; durations in seconds. Where the moment is a reading of the
// clock, it notes when the answer changes.
namespace hbr {

/// Half an hour after the end, not at it.
bool isFinished(const Event& event, platform::Date now);
/// Both bounds belong to the event.
bool isCurrentEvent(const Event& event, const platform::ClockReading& clock);
bool isAnyReminder(const Event& event);
/// Until the end of a current event, else 0.
double timeLeft(const Event& event, platform::Date now);
/// 0 at the start to 1 at the end of a current event, else 0; 1 for a current event without length.
/// A ring moves on once a minute: so often the reading notes that it changes.
double eventProgress(const Event& event, const platform::ClockReading& clock);
/// Both bounds are left out.
bool startsWithin(const Event& event, double timeinterval, platform::Date relativeTo);
bool isInFuture(const Event& event, const platform::ClockReading& relativeTo);
/// Seconds before the start at which the alert period begins: the event's own when its settings say so.
double alertOffset(double defaultTimeOffset, const std::optional<EventSettings>& eventSettings);
/// Inside the alert period: after start - offset, up to and with the start. The offset is the event's own
/// when its settings say so, else `defaultTimeOffset`; an excluded event never is.
bool isPending(const Event& event, double defaultTimeOffset,
               const std::optional<EventSettings>& eventSettings, const platform::ClockReading& clock);
/// The only link, else the one that the settings of the event name.
std::optional<VideoConferenceLink> defaultVideoConferenceLink(
    const Event& event, const std::optional<EventSettings>& eventSettings);

}  // namespace hbr
