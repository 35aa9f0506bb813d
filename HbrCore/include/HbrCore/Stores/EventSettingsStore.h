#pragma once

#include <HbrCore/Events/EventSettings.h>
#include <HbrCore/Stores/SettingsTable.h>
#include <System/DefaultsDomain.h>
#include <System/NotificationCenter.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace hbr {

/// What the user chose for single events, in the shared domain under "eventSettings". Nothing is cached.
/// Writes post the change notification and are false when the file could not be written. Safe from any
/// thread; writers never lose each other's entries.
class EventSettingsStore {
  public:
    static constexpr std::string_view customEventSettingsChangedNotification =
        "customEventSettingsChangedNotification";
    static constexpr std::string_view storageKey = SettingsTable::eventSettings;

    EventSettingsStore(platform::DefaultsDomainRef defaults, platform::NotificationCenter& center);
    /// Of CoreServices::shared().
    static EventSettingsStore& shared();

    using Settings = std::map<std::string, EventSettings, std::less<>>;
    /// Of one event in a list that was read before.
    static std::optional<EventSettings> find(const std::optional<Settings>& settings,
                                             std::string_view eventIdentifier);
    /// By event id, unreadable entries left out; nothing when a stored value is not a data block.
    std::optional<Settings> customSettings() const;
    std::optional<EventSettings> customSettings(std::string_view forEventIdentifier) const;
    /// Entries of other events stay as they are, readable or not.
    bool storeCustomSettings(const EventSettings& settings, const std::string& forEventIdentifier);
    /// Changes what is stored for one event, or the defaults of its type, under the domain's lock.
    bool updateCustomSettings(const std::string& forEventIdentifier, Event::EventType type,
                              const std::function<void(EventSettings&)>& change);
    bool deleteCustomSettings(const std::string& forEventIdentifier);
    /// Posts nothing.
    bool deleteAllCustomEventSettings();

    const platform::DefaultsDomainRef& defaults() const { return defaults_; }

  private:
    std::optional<platform::PropertyDictionary> stored() const;
    bool change(const std::function<void(platform::PropertyDictionary&)>& change);

    platform::DefaultsDomainRef defaults_;
    platform::NotificationCenter& center_;
};

}  // namespace hbr
