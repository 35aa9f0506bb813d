#include "Settings/SettingCatalogue.h"

#include "Alerts/UnreadableRecords.h"

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

std::string textOfValue(const JsonValue& value) {
    const auto* text = value.asString();
    return text ? *text : writeJson(value);
}

std::optional<std::int64_t> integerOf(std::string_view text) {
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

bool isWord(const std::string& word, std::initializer_list<const char*> words) {
    return std::ranges::find(words, word) != words.end();
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

template <class Takes>
void checkList(const SettingEntry& entry, const JsonValue& value, Takes takes) {
    if (!value.asArray()) throw SettingRefusal(entry.name, textOfValue(value));
    for (const auto& one : *value.asArray()) {
        if (!takes(one)) throw SettingRefusal(entry.name, textOfValue(one));
    }
}

template <class T, class Coding>
SettingEntry entryOf(const Setting<T, Coding>& setting) {
    return {setting,
            [&setting](const UserSettingsStore& settings) {
                return JsonCoding<T>::encode(settings.property(setting).get());
            },
            [](const JsonValue& value) { return Coding::encode(JsonCoding<T>::decode(value)); },
            [](const PropertyValue& value) { return Coding::decode(value).has_value(); }};
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

JsonValue SettingEntry::parse(const std::string& text) const {
    const auto element = [this](const std::string& piece) {
        const auto value = kind.form == Form::seconds ? secondsOfDuration(piece) : integerOf(piece);
        if (!value) throw SettingRefusal(name, piece);
        return JsonValue(*value);
    };
    switch (kind.form) {
        case Form::boolean: {
            const std::string word = platform::lowercased(text);
            if (isWord(word, {"true", "yes", "on", "1"})) return true;
            if (isWord(word, {"false", "no", "off", "0"})) return false;
            break;
        }
        case Form::seconds:
        case Form::days:
        case Form::minutes: {
            const JsonValue number = element(text);
            if (kind.contains(*number.asInteger())) return number;
            break;
        }
        case Form::identifiers:
            return parseList(text, [](const std::string& piece) { return JsonValue(piece); });
        case Form::listOfMinutes:
            return parseList(text, element);
        case Form::rules:
            if (const auto json = platform::parseJson(text)) return *json;
    }
    throw SettingRefusal(name, text);
}

void SettingEntry::check(const JsonValue& value) const {
    const auto isNumber = [this](const JsonValue& one) {
        return one.asInteger() && kind.contains(*one.asInteger());
    };
    const auto isIdentifier = [](const JsonValue& one) { return one.asString() && !one.asString()->empty(); };
    switch (kind.form) {
        case Form::boolean:
            if (value.asBool()) return;
            break;
        case Form::seconds:
        case Form::days:
        case Form::minutes:
            if (isNumber(value)) return;
            break;
        case Form::identifiers:
            return checkList(*this, value, isIdentifier);
        case Form::listOfMinutes:
            return checkList(*this, value, isNumber);
        case Form::rules:
            try {
                JsonCoding<SettingsTable::Rules>::decode(value);
                return;
            } catch (const platform::DecodingError& error) {
                throw SettingRefusal(name, textOfValue(value), error.what());
            }
    }
    throw SettingRefusal(name, textOfValue(value));
}

std::string SettingEntry::meaning(const platform::Environment& environment) const {
    return companionText(environment, "Settings.meaning." + std::string(name));
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
    static const auto catalogue = std::apply(
        [](const auto&... settings) { return std::vector{entryOf(settings)...}; }, SettingsTable::all);
    return catalogue;
}

const SettingEntry& settingNamed(const std::string& name, const platform::Environment& environment) {
    if (const SettingEntry* entry = entryNamed(name)) return *entry;
    std::vector<std::string> names;
    for (const auto& entry : settingCatalogue())
        names.emplace_back(entry.name);
    throw CommandFailure(ExitCode::wrongUsage, companionText(environment, "Settings.unknown", {name}) +
                                                   nameProposal(environment, name, names));
}

namespace {

/// Why a stored value is not what its setting takes; empty where it is.
std::string faultOf(const SettingEntry& entry, const PropertyValue& stored,
                    const UserSettingsStore& settings) {
    if (!entry.isReadable(stored)) return "the stored value has the wrong type, so the default is used";
    try {
        entry.check(entry.read(settings));
        return "";
    } catch (const SettingRefusal& refusal) {
        return "the stored value " + refusal.value + " is out of range";
    }
}

}  // namespace

std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings,
                                                     const platform::Environment& environment) {
    std::vector<platform::Diagnostic> found;
    for (const auto& entry : settingCatalogue()) {
        const auto& domain = settings.domains().domain(entry.isShared);
        const auto stored = domain->value(entry.key);
        const std::string fault = stored ? faultOf(entry, *stored, settings) : "";
        if (fault.empty()) continue;
        platform::Diagnostic diagnostic;
        diagnostic.file = domain->file();
        diagnostic.field = entry.key;
        const std::string takes =
            takesText(entry.kind, [&](std::string_view key, std::span<const L10n::FormatArgument> bounds) {
                return englishCompanionText(environment, key, bounds);
            });
        const std::string name(entry.name);
        diagnostic.text =
            name + " takes " + takes + "; " + fault + ". Fix it with: heedbanner settings reset " + name;
        found.push_back(std::move(diagnostic));
    }
    for (auto& diagnostic : unreadableRecords(*settings.domains().shared))
        found.push_back(std::move(diagnostic));
    return found;
}

}  // namespace hbr
