#include "SettingCatalogue.h"

#include "UnreadableRecords.h"

#include <Companion/DurationText.h>

#include <Companion/ExitCode.h>
#include <Foundation/NearestName.h>
#include <Foundation/Text.h>

#include <charconv>

namespace hbr {

namespace {

using platform::JsonValue;
using platform::PropertyValue;

[[noreturn]] void refuse(const std::string& name, const std::string& takes, const std::string& value) {
    throw SettingRefusal(name + " takes " + takes + ", not \"" + value + "\"");
}

std::string shown(const JsonValue& value) {
    const auto* text = value.asString();
    return text ? *text : writeJson(value);
}

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

struct Range {
    std::int64_t first = 0;
    std::int64_t last = 0;

    bool contains(std::int64_t value) const { return value >= first && value <= last; }
    std::string text() const { return "from " + std::to_string(first) + " to " + std::to_string(last); }
};

template <class Get>
SettingEntry boolean(std::string name, std::string key, std::string meaning, Get get) {
    SettingEntry entry{
        std::move(name), std::move(key), true, std::move(meaning), "true or false", {}, {}, {}, {}, {}};
    entry.read = [get](const UserSettingsStore& settings) { return JsonValue((settings.*get)()); };
    entry.parse = [name = entry.name, takes = entry.takes](const std::string& text) {
        const std::string word = platform::lowercased(text);
        if (word == "true" || word == "yes" || word == "on" || word == "1") return JsonValue(true);
        if (word == "false" || word == "no" || word == "off" || word == "0") return JsonValue(false);
        refuse(name, takes, text);
    };
    entry.check = [name = entry.name, takes = entry.takes](const JsonValue& value) {
        if (!value.asBool()) refuse(name, takes, shown(value));
    };
    entry.stored = [](const JsonValue& value) { return PropertyValue(*value.asBool()); };
    entry.isReadable = [](const PropertyValue& value) { return value.asBool().has_value(); };
    return entry;
}

using ParseNumber = std::optional<std::int64_t> (*)(std::string_view);

template <class Get>
SettingEntry number(std::string name, std::string key, std::string meaning, const std::string& unit,
                    Range range, ParseNumber parseNumber, Get get) {
    SettingEntry entry{std::move(name),
                       std::move(key),
                       true,
                       std::move(meaning),
                       "a whole number of " + unit + " " + range.text(),
                       {},
                       {},
                       {},
                       {},
                       {}};
    if (parseNumber == secondsOfDuration) entry.takes += " (also as 90s, 5m, 1h)";
    entry.read = [get](const UserSettingsStore& settings) { return JsonValue((settings.*get)()); };
    entry.parse = [name = entry.name, takes = entry.takes, range, parseNumber](const std::string& text) {
        const auto value = parseNumber(text);
        if (!value || !range.contains(*value)) refuse(name, takes, text);
        return JsonValue(*value);
    };
    entry.check = [name = entry.name, takes = entry.takes, range](const JsonValue& value) {
        const auto whole = value.asInteger();
        if (!whole || !range.contains(*whole)) refuse(name, takes, shown(value));
    };
    entry.stored = [](const JsonValue& value) { return PropertyValue(*value.asInteger()); };
    entry.isReadable = [](const PropertyValue& value) { return value.asInteger().has_value(); };
    return entry;
}

/// Lists are typed as elements with commas between them, or as JSON.
template <class Element>
JsonValue parseList(const std::string& text, Element element) {
    if (auto json = platform::parseJson(text); json && json->asArray()) return *json;
    JsonValue list = JsonValue::array();
    for (const auto& piece : platform::split(text, ",", false))
        list.append(element(platform::trimmed(piece)));
    return list;
}

template <class Get>
SettingEntry identifiers(std::string name, std::string key, std::string meaning, Get get) {
    SettingEntry entry{std::move(name),
                       std::move(key),
                       true,
                       std::move(meaning),
                       "identifiers with commas between them",
                       {},
                       {},
                       {},
                       {},
                       {}};
    entry.read = [get](const UserSettingsStore& settings) {
        JsonValue list = JsonValue::array();
        for (const auto& identifier : (settings.*get)())
            list.append(identifier);
        return list;
    };
    entry.parse = [](const std::string& text) {
        return parseList(text, [](const std::string& piece) { return JsonValue(piece); });
    };
    entry.check = [name = entry.name, takes = entry.takes](const JsonValue& value) {
        if (!value.asArray()) refuse(name, takes, shown(value));
        for (const auto& one : *value.asArray()) {
            if (!one.asString() || one.asString()->empty()) refuse(name, takes, shown(one));
        }
    };
    entry.stored = [](const JsonValue& value) {
        platform::PropertyArray list;
        for (const auto& one : *value.asArray())
            list.emplace_back(*one.asString());
        return PropertyValue(std::move(list));
    };
    entry.isReadable = [](const PropertyValue& value) { return value.asStrings().has_value(); };
    return entry;
}

SettingEntry snoozeTimes(Range range) {
    SettingEntry entry{"customSnoozeTimes",
                       "customSnoozeTimes",
                       true,
                       "Snooze times of your own, in minutes",
                       "whole numbers of minutes " + range.text() + " with commas between them",
                       {},
                       {},
                       {},
                       {},
                       {}};
    entry.read = [](const UserSettingsStore& settings) {
        JsonValue list = JsonValue::array();
        for (const std::int64_t minutes : settings.customSnoozeTimes())
            list.append(minutes);
        return list;
    };
    entry.check = [name = entry.name, takes = entry.takes, range](const JsonValue& value) {
        if (!value.asArray()) refuse(name, takes, shown(value));
        for (const auto& one : *value.asArray()) {
            if (!one.asInteger() || !range.contains(*one.asInteger())) refuse(name, takes, shown(one));
        }
    };
    entry.parse = [check = entry.check, name = entry.name, takes = entry.takes](const std::string& text) {
        JsonValue list = parseList(text, [&](const std::string& piece) {
            const auto minutes = wholeNumber(piece);
            if (!minutes) refuse(name, takes, piece);
            return JsonValue(*minutes);
        });
        check(list);
        return list;
    };
    entry.stored = [](const JsonValue& value) {
        platform::PropertyArray list;
        for (const auto& one : *value.asArray())
            list.emplace_back(*one.asInteger());
        return PropertyValue(std::move(list));
    };
    entry.isReadable = [](const PropertyValue& value) { return value.asIntegers().has_value(); };
    return entry;
}

SettingEntry excludeRules() {
    SettingEntry entry{"excludeRules",
                       "excludeRules",
                       true,
                       "Rules that leave events out",
                       "a JSON list of rules with id, field, comparison, value and isCaseSensitive",
                       {},
                       {},
                       {},
                       {},
                       {}};
    entry.read = [](const UserSettingsStore& settings) {
        return JsonCoding<std::vector<FilterRule>>::encode(settings.excludeRules());
    };
    entry.check = [name = entry.name, takes = entry.takes](const JsonValue& value) {
        try {
            JsonCoding<std::vector<FilterRule>>::decode(value);
        } catch (const platform::DecodingError& error) {
            throw SettingRefusal(name + " takes " + takes + ": " + error.what());
        }
    };
    entry.parse = [name = entry.name, takes = entry.takes](const std::string& text) {
        const auto json = platform::parseJson(text);
        if (!json) refuse(name, takes, text);
        return *json;
    };
    entry.stored = [](const JsonValue& value) {
        return PropertyValue(encodeJsonData(JsonCoding<std::vector<FilterRule>>::decode(value)));
    };
    entry.isReadable = [](const PropertyValue& value) {
        const auto* data = value.asData();
        if (!data) return false;
        try {
            decodeJsonData<std::vector<FilterRule>>(*data);
            return true;
        } catch (const platform::DecodingError&) {
            return false;
        }
    };
    return entry;
}

std::vector<SettingEntry> makeCatalogue() {
    using Store = UserSettingsStore;
    constexpr Range leadSeconds{0, 24 * 3600};
    constexpr Range days{0, 365};
    constexpr Range minutes{1, 24 * 60};
    constexpr Range delay{0, 60};
    std::vector<SettingEntry> all;
    all.push_back(identifiers("activeCalendarIdentifiers", "activeCalendarIdentifiers",
                              "The calendars that are watched (see: heedbanner calendars)",
                              &Store::activeCalendarIdentifiers));
    all.push_back(identifiers("activeReminderListIdentifiers", "activeReminderListIdentifiers",
                              "The task lists that are watched (see: heedbanner reminder-lists)",
                              &Store::activeReminderListIdentifiers));
    all.push_back(number("timeOffsetSeconds", "timeOffsetSeconds",
                         "How long before its start an event alerts", "seconds", leadSeconds,
                         secondsOfDuration, &Store::timeOffsetSeconds));
    all.push_back(boolean("showOnlyEventsWithAlert", "showOnlyEventsWithAlert",
                          "Only events that carry an alarm of their own", &Store::showOnlyEventsWithAlert));
    all.push_back(boolean("showOnlyAcceptedEvents", "showTentativeEvents",
                          "Only invitations that you accepted", &Store::showOnlyAcceptedEvents));
    all.push_back(boolean("showOnlyEventsWithVideoConference", "showOnlyEventsWithVideoConference",
                          "Only events with a conference link", &Store::showOnlyEventsWithVideoConference));
    all.push_back(number("upcomingEventsDaysFilter", "upcomingEventsDaysFilter",
                         "How many days after today are looked at", "days", days, wholeNumber,
                         &Store::upcomingEventsDaysFilter));
    all.push_back(boolean("includeTravelTime", "includeTravelTime", "Alert earlier by the travel time",
                          &Store::includeTravelTime));
    all.push_back(snoozeTimes(minutes));
    all.push_back(number("defaultSnooze1", "defaultSnooze1", "The first snooze time that is offered",
                         "minutes", minutes, wholeNumber, &Store::defaultSnooze1));
    all.push_back(number("defaultSnooze2", "defaultSnooze2", "The second snooze time that is offered",
                         "minutes", minutes, wholeNumber, &Store::defaultSnooze2));
    all.push_back(excludeRules());
    all.push_back(boolean("debugScreenshotMode", "debug_screenshotMode",
                          "Show demonstration events in place of your own", &Store::debugScreenshotMode));
    all.push_back(number("keyboardShortcutsDelay", "keyboardShortcutsDelay",
                         "How long an alert waits before it takes keys", "seconds", delay, secondsOfDuration,
                         &Store::keyboardShortcutsDelay));
    all.back().isShared = false;
    return all;
}

}  // namespace

bool SettingEntry::isStored(const UserSettingsStore& settings) const {
    return settings.domains().domain(isShared)->value(key).has_value();
}

bool applyChanges(const UserSettingsStore& settings, const SettingChanges& changes) {
    const DefaultsDomains& domains = settings.domains();
    if (changes.size() == 1) {
        const auto& [entry, value] = changes.front();
        const auto stored = value ? std::optional(entry->stored(*value)) : std::nullopt;
        return domains.domain(entry->isShared)->setValue(entry->key, stored);
    }
    return platform::DefaultsDomain::updateTogether(
        *domains.standard, *domains.shared,
        [&](platform::PropertyDictionary& standard, platform::PropertyDictionary& shared) {
            for (const auto& [entry, value] : changes) {
                auto& target = entry->isShared ? shared : standard;
                if (value) {
                    target.set(entry->key, entry->stored(*value));
                } else {
                    target.remove(entry->key);
                }
            }
        });
}

const std::vector<SettingEntry>& settingCatalogue() {
    static const std::vector<SettingEntry> catalogue = makeCatalogue();
    return catalogue;
}

const SettingEntry& settingNamed(const std::string& name) {
    std::vector<std::string> names;
    for (const auto& entry : settingCatalogue()) {
        if (entry.name == name) return entry;
        names.push_back(entry.name);
    }
    throw CommandFailure(ExitCode::wrongUsage,
                         "no setting is called \"" + name + "\"" + platform::proposal(name, names));
}

std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings) {
    std::vector<platform::Diagnostic> found;
    for (const auto& entry : settingCatalogue()) {
        const auto& domain = settings.domains().domain(entry.isShared);
        const auto stored = domain->value(entry.key);
        if (!stored || entry.isReadable(*stored)) continue;
        platform::Diagnostic diagnostic;
        diagnostic.file = domain->file();
        diagnostic.field = entry.key;
        diagnostic.text =
            entry.name + " takes " + entry.takes +
            "; what is stored is of another kind, so the default counts. Mend it with: heedbanner "
            "settings reset " +
            entry.name;
        found.push_back(std::move(diagnostic));
    }
    for (auto& diagnostic : unreadableRecords(*settings.domains().shared))
        found.push_back(std::move(diagnostic));
    return found;
}

}  // namespace hbr
