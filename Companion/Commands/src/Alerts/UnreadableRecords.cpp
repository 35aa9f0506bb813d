#include "Alerts/UnreadableRecords.h"

#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/HiddenOccurrencesStore.h>
#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace hbr {

namespace {

/// Why the value cannot be read as a T; nothing when it can.
template <class T>
std::optional<std::string> fault(const platform::PropertyValue& value) {
    const auto* data = value.asData();
    if (!data) return "the stored value is not data";
    try {
        decodeJsonData<T>(*data);
        return std::nullopt;
    } catch (const platform::DecodingError& error) {
        return error.what();
    }
}

std::optional<std::string> remindersFault(const platform::DefaultsDomain& shared) {
    const auto stored = shared.value(CustomRemindersStore::storageKey);
    return stored ? fault<std::vector<Reminder>>(*stored) : std::nullopt;
}

platform::Diagnostic diagnostic(const platform::DefaultsDomain& shared, std::string_view field,
                                std::string text) {
    platform::Diagnostic result;
    result.file = shared.file();
    result.field = field;
    result.text = std::move(text);
    return result;
}

}  // namespace

bool hasReadableReminders(const platform::DefaultsDomain& shared) {
    return !remindersFault(shared);
}

std::vector<platform::Diagnostic> unreadableRecords(const platform::DefaultsDomain& shared) {
    std::vector<platform::Diagnostic> found;
    if (const auto reason = remindersFault(shared)) {
        found.push_back(diagnostic(shared, CustomRemindersStore::storageKey,
                                   "your own reminders cannot be read (" + *reason +
                                       ") and are ignored. Remove them with: heedbanner reminders remove "
                                       "--all"));
    }
    if (const auto hidden = shared.value(HiddenOccurrencesStore::storageKey)) {
        const auto texts = hidden->asStrings();
        if (!texts ||
            !std::ranges::all_of(*texts, [](const auto& one) { return Occurrence::parse(one).has_value(); }))
            found.push_back(diagnostic(shared, HiddenOccurrencesStore::storageKey,
                                       "some of the left out occurrences cannot be read; they are ignored. "
                                       "Remove them with: heedbanner event reset --all"));
    }
    const auto stored = shared.value(EventSettingsStore::storageKey);
    if (!stored) return found;
    const auto* entries = stored->asDictionary();
    if (!entries) {
        found.push_back(diagnostic(shared, EventSettingsStore::storageKey,
                                   "the settings of single events are not a dictionary and are ignored. "
                                   "Remove them with: heedbanner event reset --all"));
        return found;
    }
    for (const auto& [identifier, entry] : *entries) {
        const auto reason = fault<EventSettings>(entry);
        if (!reason) continue;
        const std::string ignored = entry.asData() ? "they are ignored" : "those of all events are ignored";
        found.push_back(diagnostic(shared, EventSettingsStore::storageKey,
                                   "the settings of event " + identifier + " cannot be read (" + *reason +
                                       "); " + ignored + ". Remove them with: heedbanner event reset " +
                                       identifier));
    }
    return found;
}

}  // namespace hbr
