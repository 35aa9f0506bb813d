#pragma once

#include <System/Diagnostics.h>
#include <Values/JsonValue.h>

#include <HbrCore/Stores/UserSettingsStore.h>
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
    SettingRefusal(std::string_view name, std::string typed, std::string why = {})
        : std::runtime_error(std::string(name) + ": " + typed),
          setting(name),
          value(std::move(typed)),
          reason(std::move(why)) {}

    /// Names the setting, what it takes and the value.
    std::string text(const platform::Environment& environment) const;

    std::string setting;
    std::string value;
    std::string reason;
};

/// A setting of the core as the command line reads and changes it.
struct SettingEntry : SettingFacts {
    std::function<platform::JsonValue(const UserSettingsStore&)> read;
    /// The form in which a checked value is stored.
    std::function<platform::PropertyValue(const platform::JsonValue&)> stored;
    /// True when a stored value reads as this setting (anything else is ignored).
    std::function<bool(const platform::PropertyValue&)> isReadable;

    /// Reads a value as typed, still to be checked; throws SettingRefusal.
    platform::JsonValue parse(const std::string& text) const;
    /// Checks type and range of a JSON value; throws SettingRefusal.
    void check(const platform::JsonValue& value) const;
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

/// One diagnostic, in English, for each stored value that does not read as its setting, so that the default
/// is used, or that is out of range, and for what is stored beside them (own reminders, settings of events).
std::vector<platform::Diagnostic> unreadableSettings(const UserSettingsStore& settings,
                                                     const platform::Environment& environment);

}  // namespace hbr
