#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Reminder.h>
#include <string>
#include <string_view>

namespace hbr {

/// "Friday, November 27, 2026 at 2:30 PM" in the user's language and zone.
std::string exactMoment(platform::Date moment, const platform::Environment& environment);

/// One line about a reminder: the exact moment, its distance from `now`, the alert's lead, the title.
std::string reminderLine(const Reminder& reminder, CommandContext& context, platform::Date now);

/// The record as commands print it: the date in RFC 3339, without absent fields.
platform::JsonValue reminderJson(const Reminder& reminder);

/// The reminder with this id, an unambiguous beginning of it, or this part of the title. Throws
/// CommandFailure (nothingThere); if several match, it lists them.
Reminder chosenReminder(const std::string& wanted, CommandContext& context);

/// Seconds of an option's length of time; throws CommandFailure (wrong usage).
std::int64_t secondsOfOption(std::string_view option, const std::string& text,
                             const platform::Environment& environment);

/// The same for a lead; own reminders alert at most a day ahead.
std::int64_t leadOfOption(std::string_view option, const std::string& text,
                          const platform::Environment& environment);

/// Throws CommandFailure (wrongUsage) when the alert would be in the past, since it would never come.
void requireAlertToCome(const Reminder& reminder, CommandContext& context);

/// Throws CommandFailure (failed) when the stored reminders cannot be read, since a change would replace
/// them.
void requireReadableReminders(CommandContext& context);

/// Throws CommandFailure (failed) when the settings could not be written.
void requireStored(bool isStored, CommandContext& context);

}  // namespace hbr
