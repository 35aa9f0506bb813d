#include <HbrUtils/DistanceTexts.h>

#include <HbrUtils/RelativeTimeTexts.h>
#include <HbrUtils/TimeConstants.h>

#include <algorithm>
#include <cmath>

namespace hbr {

using platform::ClockReading;
using platform::Date;

namespace {

/// The moment that formatters are given which round fractions of a second in their own way: whole seconds
/// away from the date, but on the day that it is.
Date asOfWholeSeconds(Date date, const ClockReading& clock, const Formatters& formatters) {
    constexpr double beforeMidnight = 0.001;
    const platform::Calendar& calendar = formatters.environment().calendar;
    const Date moment = date.addingTimeInterval(-clock.wholeSecondsUntil(date));
    const Date today = calendar.startOfDay(clock.now());
    const Date tomorrow = calendar.startOfDay(calendar.addingDays(today, 1));
    return std::clamp(moment, today, tomorrow.addingTimeInterval(-beforeMidnight));
}

/// The length that is counted in the largest unit that fits: seconds in the last minute.
double unitOf(double seconds) {
    for (const double unit : {DAY, HOUR, MINUTE}) {
        if (std::fabs(seconds) >= unit) return unit;
    }
    return 1;
}

/// Of a text with minutes, also where hours and days precede them: their bounds are whole minutes.
void noteNextMinute(Date date, const ClockReading& clock) {
    clock.notesNextCount(date, MINUTE);
}

void noteShortTextChange(Date date, const ClockReading& clock, const Formatters& formatters) {
    noteNextMinute(date, clock);
    clock.notesNextDay(formatters.environment().calendar);
    // "now" is nearer than half a minute, and a larger unit or "tomorrow" begins a second after its bound.
    for (const double bound : {30.0, HOUR + 1, 4 * HOUR + 1, DAY + 1}) {
        clock.notesLessThan(bound, date);
        clock.hasReached(date.addingTimeInterval(bound));
    }
}

}  // namespace

std::optional<std::string> countdownText(Date date, const ClockReading& clock, const Formatters& formatters) {
    noteNextMinute(date, clock);
    return formatters.countdownFormatter().string(clock.now(), date);
}

std::optional<std::string> spokenCountdownText(Date date, const ClockReading& clock,
                                               const Formatters& formatters) {
    noteNextMinute(date, clock);
    return formatters.durationFormatterForAccessibility().string(clock.now(), date);
}

std::optional<std::string> timeRemainingText(Date end, const ClockReading& clock,
                                             const Formatters& formatters) {
    const double seconds = clock.wholeSecondsUntil(end);
    clock.notesNextCount(end, unitOf(seconds));
    return formatters.timeRemaining(seconds);
}

std::string relativeText(Date date, const ClockReading& clock, const Formatters& formatters) {
    // Days and longer units end by the wall clock, which shows whole minutes as well.
    clock.notesNextCount(date, std::min(unitOf(clock.wholeSecondsUntil(date)), MINUTE));
    return formatters.relativeDefault().string(date, asOfWholeSeconds(date, clock, formatters));
}

std::string shortRelativeText(Date date, bool isCurrentEvent, const ClockReading& clock,
                              const Formatters& formatters) {
    noteShortTextChange(date, clock, formatters);
    return formattedShortRelativeTime(date, asOfWholeSeconds(date, clock, formatters), false, isCurrentEvent,
                                      formatters);
}

std::string compactRelativeText(Date date, bool isCurrentEvent, const ClockReading& clock,
                                const Formatters& formatters) {
    noteShortTextChange(date, clock, formatters);
    return formattedCompactRelativeTime(date, asOfWholeSeconds(date, clock, formatters), isCurrentEvent,
                                        formatters);
}

}  // namespace hbr
