#pragma once

#include <HbrUtils/Formatters.h>
#include <TimeAndText/ClockReading.h>

#include <optional>
#include <string>

// How far away a date is, or how much of something is left, as of one reading of the clock, on which each
// text notes when it changes. One rounding for all of them: what has begun of a second is gone, and only
// whole units are named. From 9:50:00 on a meeting at 10:00 is less than ten minutes away and reads "9 m".
// Any thread.
namespace hbr {

/// "1h 29m"; nothing when the formatter gives none.
std::optional<std::string> countdownText(platform::Date date, const platform::ClockReading& clock,
                                         const Formatters& formatters);
/// "1 hour, 29 minutes".
std::optional<std::string> spokenCountdownText(platform::Date date, const platform::ClockReading& clock,
                                               const Formatters& formatters);
/// "29m remaining"; by the second in the last minute.
std::optional<std::string> timeRemainingText(platform::Date end, const platform::ClockReading& clock,
                                             const Formatters& formatters);
/// "in 29 minutes", "2 hours ago".
std::string relativeText(platform::Date date, const platform::ClockReading& clock,
                         const Formatters& formatters);
/// "in 1 h 29 m", "29 m left"; see formattedShortRelativeTime.
std::string shortRelativeText(platform::Date date, bool isCurrentEvent, const platform::ClockReading& clock,
                              const Formatters& formatters);
/// "1h29", "29m left"; see formattedCompactRelativeTime.
std::string compactRelativeText(platform::Date date, bool isCurrentEvent, const platform::ClockReading& clock,
                                const Formatters& formatters);

}  // namespace hbr
