#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Reminder.h>
#include <string>
#include <string_view>

namespace hbr {

/// "Friday, November 27, 2026 at 2:30 PM" in the user's language and zone.
std::string exactMoment(platform::Date moment, const platform::Environment& environment);

/// How a reminder was understood: the exact moment, how far from `now` it is, the alert's lead, the title.
std::string reminderLine(const Reminder& reminder, CommandContext& context, platform::Date now);

/// The record as commands print it: the date as RFC 3339, absent fields left out.
platform::JsonValue reminderJson(const Reminder& reminder);

/// The reminder meant by an id, by an unambiguous beginning of one, or by a part of a title. Throws
/// CommandFailure (nothing there to act on), with the list where there are several.
Reminder chosenReminder(const std::string& wanted, CommandContext& context);

/// Seconds of an option's length of time; throws CommandFailure (wrong usage).
std::int64_t secondsOfOption(std::string_view option, const std::string& text,
                             const platform::Environment& environment);

/// Own reminders alert up to a day ahead.
std::int64_t leadOfOption(std::string_view option, const std::string& text,
                          const platform::Environment& environment);

/// Throws CommandFailure (wrong usage) when the lead puts the alert into the past: it would never come.
void requireAlertToCome(const Reminder& reminder, CommandContext& context);

/// Throws CommandFailure (failed) when the stored reminders cannot be read: a change would replace them.
void requireReadableReminders(CommandContext& context);

/// Throws CommandFailure (failed) when the settings could not be written.
void requireStored(bool isStored, CommandContext& context);

}  // namespace hbr
