#include "SettingCatalogue.h"

#include "UnreadableRecords.h"

#include <Session/ExitCode.h>
#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <Values/KeyedDecoder.h>
#include <When/DurationText.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>

#include <algorithm>
#include <charconv>

namespace hbr {

namespace {

using platform::JsonValue;
using platform::PropertyValue;

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

using Form = SettingKind::Form;

std::string_view formKey(Form form) {
    switch (form) {
        case Form::boolean:
            return "Settings.takes.boolean";
        case Form::seconds:
            return "Settings.takes.seconds";
        case Form::days:
            return "Settings.takes.days";
        case Form::minutes:
            return "Settings.takes.minutes";
        case Form::identifiers:
            return "Settings.takes.identifiers";
        case Form::listOfMinutes:
            return "Settings.takes.listOfMinutes";
        case Form::rules:
            break;
    }
    return "Settings.takes.rules";
}

/// Stored under its own name.
SettingEntry blank(std::string name, SettingKind kind) {
    SettingEntry entry;
    entry.key = name;
    entry.name = std::move(name);
    entry.kind = kind;
    return entry;
}

template <class Get>
SettingEntry boolean(std::string name, Get get) {
    SettingEntry entry = blank(std::move(name), {Form::boolean});
    entry.read = [get](const UserSettingsStore& settings) { return JsonValue((settings.*get)()); };
    entry.parse = [name = entry.name](const std::string& text) {
        const std::string word = platform::lowercased(text);
        if (word == "true" || word == "yes" || word == "on" || word == "1") return JsonValue(true);
        if (word == "false" || word == "no" || word == "off" || word == "0") return JsonValue(false);
        throw SettingRefusal(name, text);
    };
    entry.check = [name = entry.name](const JsonValue& value) {
        if (!value.asBool()) throw SettingRefusal(name, shown(value));
    };
    entry.stored = [](const JsonValue& value) { return PropertyValue(*value.asBool()); };
    entry.isReadable = [](const PropertyValue& value) { return value.asBool().has_value(); };
    return entry;
}

template <class Get>
SettingEntry number(std::string name, SettingKind kind, Get get) {
    SettingEntry entry = blank(std::move(name), kind);
    entry.read = [get](const UserSettingsStore& settings) { return JsonValue((settings.*get)()); };
    entry.parse = [name = entry.name, kind](const std::string& text) {
        const auto value = kind.form == Form::seconds ? secondsOfDuration(text) : wholeNumber(text);
        if (!value || !kind.contains(*value)) throw SettingRefusal(name, text);
        return JsonValue(*value);
    };
    entry.check = [name = entry.name, kind](const JsonValue& value) {
        const auto whole = value.asInteger();
        if (!whole || !kind.contains(*whole)) throw SettingRefusal(name, shown(value));
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
SettingEntry identifiers(std::string name, Get get) {
    SettingEntry entry = blank(std::move(name), {Form::identifiers});
    entry.read = [get](const UserSettingsStore& settings) {
        JsonValue list = JsonValue::array();
        for (const auto& identifier : (settings.*get)())
            list.append(identifier);
        return list;
    };
    entry.parse = [](const std::string& text) {
        return parseList(text, [](const std::string& piece) { return JsonValue(piece); });
    };
    entry.check = [name = entry.name](const JsonValue& value) {
        if (!value.asArray()) throw SettingRefusal(name, shown(value));
        for (const auto& one : *value.asArray()) {
            if (!one.asString() || one.asString()->empty()) throw SettingRefusal(name, shown(one));
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

SettingEntry snoozeTimes(SettingKind kind) {
    SettingEntry entry = blank("customSnoozeTimes", kind);
    entry.read = [](const UserSettingsStore& settings) {
        JsonValue list = JsonValue::array();
        for (const std::int64_t minutes : settings.customSnoozeTimes())
            list.append(minutes);
        return list;
    };
    entry.check = [name = entry.name, kind](const JsonValue& value) {
        if (!value.asArray()) throw SettingRefusal(name, shown(value));
        for (const auto& one : *value.asArray()) {
            if (!one.asInteger() || !kind.contains(*one.asInteger())) throw SettingRefusal(name, shown(one));
        }
    };
    entry.parse = [check = entry.check, name = entry.name](const std::string& text) {
        JsonValue list = parseList(text, [&](const std::string& piece) {
            const auto minutes = wholeNumber(piece);
            if (!minutes) throw SettingRefusal(name, piece);
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
    SettingEntry entry = blank("excludeRules", {Form::rules});
    entry.read = [](const UserSettingsStore& settings) {
        return JsonCoding<std::vector<FilterRule>>::encode(settings.excludeRules());
    };
    entry.check = [name = entry.name](const JsonValue& value) {
        try {
            JsonCoding<std::vector<FilterRule>>::decode(value);
        } catch (const platform::DecodingError& error) {
            throw SettingRefusal(name, shown(value), error.what());
        }
    };
    entry.parse = [name = entry.name](const std::string& text) {
        const auto json = platform::parseJson(text);
        if (!json) throw SettingRefusal(name, text);
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
    constexpr SettingKind leadSeconds{Form::seconds, 0, 24 * 3600};
    constexpr SettingKind days{Form::days, 0, 365};
    constexpr SettingKind minutes{Form::minutes, 1, 24 * 60};
    constexpr SettingKind delay{Form::seconds, 0, 60};
    std::vector<SettingEntry> all;
    all.push_back(identifiers("activeCalendarIdentifiers", &Store::activeCalendarIdentifiers));
    all.push_back(identifiers("activeReminderListIdentifiers", &Store::activeReminderListIdentifiers));
    all.push_back(number("timeOffsetSeconds", leadSeconds, &Store::timeOffsetSeconds));
    all.push_back(boolean("showOnlyEventsWithAlert", &Store::showOnlyEventsWithAlert));
    all.push_back(boolean("showOnlyAcceptedEvents", &Store::showOnlyAcceptedEvents));
    all.back().key = "showTentativeEvents";
    all.push_back(boolean("showOnlyEventsWithVideoConference", &Store::showOnlyEventsWithVideoConference));
    all.push_back(number("upcomingEventsDaysFilter", days, &Store::upcomingEventsDaysFilter));
    all.push_back(boolean("includeTravelTime", &Store::includeTravelTime));
    all.push_back(snoozeTimes({Form::listOfMinutes, minutes.first, minutes.last}));
    all.push_back(number("defaultSnooze1", minutes, &Store::defaultSnooze1));
    all.push_back(number("defaultSnooze2", minutes, &Store::defaultSnooze2));
    all.push_back(excludeRules());
    all.push_back(boolean("debugScreenshotMode", &Store::debugScreenshotMode));
    all.back().key = "debug_screenshotMode";
    all.push_back(number("keyboardShortcutsDelay", delay, &Store::keyboardShortcutsDelay));
    all.back().isShared = false;
    return all;
}

const SettingEntry* entryNamed(std::string_view name) {
    const auto& all = settingCatalogue();
    const auto found = std::ranges::find_if(all, [&](const SettingEntry& one) { return one.name == name; });
    return found == all.end() ? nullptr : &*found;
}

/// The bounds are values to type: plain digits.
template <class Text>
std::string takesText(const SettingKind& kind, const Text& text) {
    const std::string first = std::to_string(kind.first);
    const std::string last = std::to_string(kind.last);
    const L10n::FormatArgument bounds[] = {first, last};
    return text(formKey(kind.form), std::span(bounds));
}

}  // namespace

std::string SettingRefusal::text(const platform::Environment& environment) const {
    const SettingEntry* entry = entryNamed(setting);
    const std::string takes = entry ? entry->takes(environment) : "";
    return reason.empty() ? companionText(environment, "Settings.refused", {setting, takes, value})
                          : companionText(environment, "Settings.refusedFor", {setting, takes, reason});
}

std::string SettingEntry::meaning(const platform::Environment& environment) const {
    return companionText(environment, "Settings.meaning." + name);
}

std::string SettingEntry::takes(const platform::Environment& environment) const {
    return takesText(kind, [&](std::string_view formName, std::span<const L10n::FormatArgument> bounds) {
        return companionText(environment, formName, bounds);
    });
}

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

const SettingEntry& settingNamed(const std::string& name, const platform::Environment& environment) {
    if (const SettingEntry* entry = entryNamed(name)) return *entry;
    std::vector<std::string> names;
    for (const auto& entry : settingCatalogue())
        names.push_back(entry.name);
    throw CommandFailure(ExitCode::wrongUsage, companionText(environment, "Settings.unknown", {name}) +
                                                   nameProposal(environment, name, names));
}

const SettingEntry& excludeRulesSetting() {
    return *entryNamed("excludeRules");
}

std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings,
                                                     const platform::Environment& environment) {
    std::vector<platform::Diagnostic> found;
    for (const auto& entry : settingCatalogue()) {
        const auto& domain = settings.domains().domain(entry.isShared);
        const auto stored = domain->value(entry.key);
        if (!stored || entry.isReadable(*stored)) continue;
        platform::Diagnostic diagnostic;
        diagnostic.file = domain->file();
        diagnostic.field = entry.key;
        const std::string takes =
            takesText(entry.kind, [&](std::string_view key, std::span<const L10n::FormatArgument> bounds) {
                return englishCompanionText(environment, key, bounds);
            });
        diagnostic.text = entry.name + " takes " + takes +
                          "; the stored value has the wrong type, so the default is used. Fix it with: "
                          "heedbanner settings reset " +
                          entry.name;
        found.push_back(std::move(diagnostic));
    }
    for (auto& diagnostic : unreadableRecords(*settings.domains().shared))
        found.push_back(std::move(diagnostic));
    return found;
}

}  // namespace hbr
