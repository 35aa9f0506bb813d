#pragma once

#include <System/Diagnostics.h>
#include <Values/JsonValue.h>

#include <HbrCore/Stores/UserSettingsStore.h>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hbr {

/// A value that a setting does not take.
class SettingRefusal : public std::runtime_error {
  public:
    /// `reason`: in English, where the value's form is right but not what it holds.
    SettingRefusal(std::string name, std::string typed, std::string why = {})
        : std::runtime_error(name + ": " + typed),
          setting(std::move(name)),
          value(std::move(typed)),
          reason(std::move(why)) {}

    /// Names the setting, what it takes and the value.
    std::string text(const platform::Environment& environment) const;

    std::string setting;
    std::string value;
    std::string reason;
};

/// What a setting takes. For numbers both bounds are valid.
struct SettingKind {
    enum class Form { boolean, seconds, days, minutes, identifiers, listOfMinutes, rules };

    Form form = Form::boolean;
    std::int64_t first = 0;
    std::int64_t last = 0;

    bool contains(std::int64_t number) const { return number >= first && number <= last; }
};

/// One user setting as the command line shows it, under its property name.
struct SettingEntry {
    std::string name;
    /// Where it is stored, and under which key.
    std::string key;
    bool isShared = true;
    SettingKind kind;

    std::function<platform::JsonValue(const UserSettingsStore&)> read;
    /// Reads a value as typed; throws SettingRefusal.
    std::function<platform::JsonValue(const std::string&)> parse;
    /// Checks kind and range of a JSON value; throws SettingRefusal.
    std::function<void(const platform::JsonValue&)> check;
    /// The form in which a checked value is stored.
    std::function<platform::PropertyValue(const platform::JsonValue&)> stored;
    /// True when a stored value reads as this setting (anything else is ignored).
    std::function<bool(const platform::PropertyValue&)> isReadable;

    bool isStored(const UserSettingsStore& settings) const;
    /// What it does.
    std::string meaning(const platform::Environment& environment) const;
    /// What it takes ("a whole number of seconds from 0 to 86400, also as 90s or 5m").
    std::string takes(const platform::Environment& environment) const;
};

/// New values of settings, checked ones; without a value the setting goes back to its default, by being
/// removed from where it lives.
using SettingChanges = std::vector<std::pair<const SettingEntry*, std::optional<platform::JsonValue>>>;

/// All of the changes or none, under the locks of both domains. False when they could not be stored.
bool applyChanges(const UserSettingsStore& settings, const SettingChanges& changes);

/// All settings, in the order in which they are listed.
const std::vector<SettingEntry>& settingCatalogue();

/// Throws CommandFailure (wrong usage) with the nearest name when there is none of that name.
const SettingEntry& settingNamed(const std::string& name, const platform::Environment& environment);
const SettingEntry& excludeRulesSetting();

/// One diagnostic, in English, for each stored value that does not read as its setting, so that the default
/// is used, and for what is stored beside them (own reminders, settings of events).
std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings,
                                                     const platform::Environment& environment);

}  // namespace hbr
