#include "Alerts/ReminderText.h"

#include "Alerts/UnreadableRecords.h"

#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/Text.h>
#include <When/DurationText.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <algorithm>

namespace hbr {

namespace {

std::string listed(const std::vector<Reminder>& reminders, CommandContext& context) {
    std::string list;
    for (const auto& reminder : reminders)
        list += "\n  " + reminder.id() + "  " + reminderLine(reminder, context, context.now());
    return list;
}

}  // namespace

std::string exactMoment(platform::Date moment, const platform::Environment& environment) {
    return platform::DateFormatter::withTemplate(environment.locale, environment.calendar, "yMMMMEEEEdjm")
        .string(moment);
}

std::string reminderLine(const Reminder& reminder, CommandContext& context, platform::Date now) {
    const Formatters& formatters = context.core().formatters();
    std::string line = exactMoment(reminder.date(), *context.environment());
    std::string details;
    if (reminder.date() > now) {
        details = formatters.relativeDefault().string(reminder.date(), now);
    }
    if (reminder.timeOffsetSeconds() != 0) {
        const auto lead =
            formatters.durationFormatter().string(static_cast<double>(reminder.timeOffsetSeconds()));
        const std::string length = lead.value_or("");
        details +=
            (details.empty() ? "" : ", ") + companionText(*context.environment(), "Reminder.alert", {length});
    }
    if (!details.empty()) line += " (" + details + ")";
    return line + ": " + onOneLine(reminder.localizedTitle(*context.environment()));
}

platform::JsonValue reminderJson(const Reminder& reminder) {
    auto record = platform::JsonValue::object();
    record.set("id", reminder.id())
        .set("date", platform::formatRfc3339(reminder.date()))
        .setIfPresent("title", reminder.title())
        .setIfPresent("notes", reminder.notes())
        .set("timeOffsetSeconds", reminder.timeOffsetSeconds());
    return record;
}

Reminder chosenReminder(const std::string& wanted, CommandContext& context) {
    const auto all = context.core().reminders().reminders();
    const std::string text = platform::lowercased(wanted);
    const auto matching = [&](auto matches) {
        std::vector<Reminder> found;
        std::ranges::copy_if(all, std::back_inserter(found), matches);
        return found;
    };
    auto found = matching([&](const Reminder& one) { return one.id() == wanted; });
    if (found.empty() && !text.empty()) {
        found =
            matching([&](const Reminder& one) { return platform::lowercased(one.id()).starts_with(text); });
        // A word such as "fee" can also be the beginning of an id.
        for (const auto& one : matching([&](const Reminder& other) {
                 return platform::lowercased(other.localizedTitle(*context.environment())).find(text) !=
                        std::string::npos;
             })) {
            if (std::ranges::find(found, one) == found.end()) found.push_back(one);
        }
    }
    if (found.size() == 1) return found.front();
    if (found.empty()) {
        throw CommandFailure(ExitCode::nothingThere,
                             companionText(*context.environment(), "Reminders.unknown", {wanted}));
    }
    throw CommandFailure(
        ExitCode::nothingThere,
        companionText(*context.environment(), "Reminders.several", {wanted}) + listed(found, context));
}

std::int64_t secondsOfOption(std::string_view option, const std::string& text,
                             const platform::Environment& environment) {
    const auto seconds = secondsOfDuration(text);
    if (seconds) return *seconds;
    throw CommandFailure(ExitCode::wrongUsage,
                         companionText(environment, "Option.takesLength", {option, text}));
}

std::int64_t leadOfOption(std::string_view option, const std::string& text,
                          const platform::Environment& environment) {
    constexpr std::int64_t longest = 24 * 3600;
    const std::int64_t seconds = secondsOfOption(option, text, environment);
    if (seconds <= longest) return seconds;
    throw CommandFailure(ExitCode::wrongUsage,
                         companionText(environment, "Option.takesADay", {option, text}));
}

void requireAlertToCome(const Reminder& reminder, CommandContext& context) {
    const auto alert = reminder.addingTimeInterval(-static_cast<double>(reminder.timeOffsetSeconds())).date();
    if (alert > context.now()) return;
    const std::string moment = exactMoment(alert, *context.environment());
    throw CommandFailure(ExitCode::wrongUsage,
                         companionText(*context.environment(), "Reminders.alertIsPast", {moment}));
}

void requireReadableReminders(CommandContext& context) {
    const auto& shared = *context.core().sharedDomain();
    if (hasReadableReminders(shared)) return;
    throw CommandFailure(ExitCode::failed, shared.file().string() + ": " +
                                               companionText(*context.environment(), "Reminders.unreadable"));
}

void requireStored(bool isStored, CommandContext& context) {
    if (isStored) return;
    throw CommandFailure(ExitCode::failed, context.core().sharedDomain()->file().string() + ": " +
                                               companionText(*context.environment(), "Accounts.notWritten"));
}

}  // namespace hbr
