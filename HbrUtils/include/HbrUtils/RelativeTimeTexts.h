#pragma once

#include <HbrUtils/Formatters.h>

#include <string>

// Texts of how far away a date is. Amounts are ASCII digits cut off towards zero; words come from the string
// catalogue. Any thread.
namespace hbr {

/// "in 2 h 5 m", "5 m ago", "12 m left", "now"; from more than four hours away the next day reads
/// "tomorrow 9:41 AM". Under 30 s is now.
std::string formattedShortRelativeTime(platform::Date date, platform::Date relativeTo, bool forAccessibility,
                                       bool isCurrentEvent, const Formatters& formatters);
/// "2h05", "59m ago", "12m left", "tmr 9:41 AM".
std::string formattedCompactRelativeTime(platform::Date date, platform::Date relativeTo, bool isCurrentEvent,
                                         const Formatters& formatters);
/// "at 9:41 AM" for a date of today, else "on Monday at 9:41 AM".
std::string formattedWithOnAndAt(platform::Date date, const platform::DateFormatter& dateFormatter,
                                 const platform::DateFormatter& timeFormatter, const Formatters& formatters,
                                 platform::Date now);
/// "in 5 minutes".
std::string formattedRelativeTime(platform::Date date, platform::Date relativeTo,
                                  const Formatters& formatters);

/// 90 minutes: "1 hour, 30 minutes".
std::string formattedMinutes(int minutes, const Formatters& formatters);
/// "1 minute", "15 minutes".
std::string localizedSnoozeTime(int minutes, const Formatters& formatters);
/// Of Environment::current().
std::string localizedSnoozeTime(int minutes);

}  // namespace hbr
