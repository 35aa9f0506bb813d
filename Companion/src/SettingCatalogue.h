#pragma once

#include <Foundation/Diagnostics.h>
#include <Foundation/Json.h>
#include <HbrCore/Stores/UserSettingsStore.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace hbr {

/// A value that a setting does not take; the text names the setting and what it takes.
class SettingRefusal : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// One user setting as the command line shows it, under its property name.
struct SettingEntry {
    std::string name;
    /// Where it is stored, and under which key.
    std::string key;
    bool isShared = true;
    /// What it does, and what it takes ("a whole number of seconds from 0 to 86400, also as 90s or 5m").
    std::string meaning;
    std::string takes;

    std::function<platform::JsonValue(const UserSettingsStore&)> read;
    /// Reads a value as typed; throws SettingRefusal.
    std::function<platform::JsonValue(const std::string&)> parse;
    /// Checks kind and range of a JSON value; throws SettingRefusal.
    std::function<void(const platform::JsonValue&)> check;
    /// The form in which a checked value is stored.
    std::function<platform::PropertyValue(const platform::JsonValue&)> stored;
    /// True when a stored value reads as this setting (anything else counts as the default).
    std::function<bool(const platform::PropertyValue&)> isReadable;

    bool isStored(const UserSettingsStore& settings) const;
};

/// New values of settings, checked ones; without a value the setting goes back to its default, by being
/// removed from where it lives.
using SettingChanges = std::vector<std::pair<const SettingEntry*, std::optional<platform::JsonValue>>>;

/// All of the changes or none, under the locks of both domains. False when they could not be stored.
bool applyChanges(const UserSettingsStore& settings, const SettingChanges& changes);

/// All settings, in the order in which they are listed.
const std::vector<SettingEntry>& settingCatalogue();

/// Throws CommandFailure (wrong usage) with the nearest name when there is none of that name.
const SettingEntry& settingNamed(const std::string& name);

/// One diagnostic for each stored value that does not read as its setting, so that the default counts, and
/// for what is stored beside them (own reminders, settings of events).
std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings);

}  // namespace hbr
