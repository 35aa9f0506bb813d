#include <HbrCore/Stores/EventSettingsStore.h>

#include <utility>

namespace hbr {

using platform::PropertyDictionary;
using platform::PropertyValue;

namespace {

std::optional<EventSettings> decoded(const PropertyValue& stored) {
    try {
        return decodeJsonData<EventSettings>(*stored.asData());
    } catch (const platform::DecodingError&) {
        return std::nullopt;
    }
}

PropertyDictionary dictionary(const std::optional<PropertyValue>& stored) {
    const PropertyDictionary* entries = stored ? stored->asDictionary() : nullptr;
    return entries ? *entries : PropertyDictionary();
}

}  // namespace

EventSettingsStore::EventSettingsStore(platform::DefaultsDomainRef defaults,
                                       platform::NotificationCenter& center)
    : defaults_(std::move(defaults)), center_(center) {}

std::optional<PropertyDictionary> EventSettingsStore::stored() const {
    const auto value = defaults_->value(storageKey);
    const PropertyDictionary* entries = value ? value->asDictionary() : nullptr;
    if (!entries) return std::nullopt;
    for (const auto& [identifier, entry] : *entries) {
        if (!entry.asData()) return std::nullopt;
    }
    return *entries;
}

std::optional<EventSettings> EventSettingsStore::find(const std::optional<Settings>& settings,
                                                      std::string_view eventIdentifier) {
    if (!settings) return std::nullopt;
    const auto found = settings->find(eventIdentifier);
    return found == settings->end() ? std::nullopt : std::optional(found->second);
}

std::optional<EventSettingsStore::Settings> EventSettingsStore::customSettings() const {
    const auto entries = stored();
    if (!entries) return std::nullopt;
    Settings settings;
    for (const auto& [identifier, entry] : *entries) {
        if (auto record = decoded(entry)) settings.emplace(identifier, *std::move(record));
    }
    return settings;
}

std::optional<EventSettings> EventSettingsStore::customSettings(std::string_view forEventIdentifier) const {
    const auto entries = stored();
    const PropertyValue* entry = entries ? entries->find(forEventIdentifier) : nullptr;
    return entry ? decoded(*entry) : std::nullopt;
}

bool EventSettingsStore::storeCustomSettings(const EventSettings& settings,
                                             const std::string& forEventIdentifier) {
    return change([data = encodeJsonData(settings), forEventIdentifier](PropertyDictionary& entries) {
        entries.set(forEventIdentifier, data);
    });
}

bool EventSettingsStore::updateCustomSettings(const std::string& forEventIdentifier, Event::EventType type,
                                              const std::function<void(EventSettings&)>& change) {
    return this->change([forEventIdentifier, type, change](PropertyDictionary& entries) {
        const PropertyValue* entry = entries.find(forEventIdentifier);
        const auto current = entry && entry->asData() ? decoded(*entry) : std::nullopt;
        EventSettings settings = current.value_or(EventSettings::defaultSettings(type));
        change(settings);
        entries.set(forEventIdentifier, encodeJsonData(settings));
    });
}

bool EventSettingsStore::deleteCustomSettings(const std::string& forEventIdentifier) {
    return change([forEventIdentifier](PropertyDictionary& entries) { entries.remove(forEventIdentifier); });
}

bool EventSettingsStore::change(const std::function<void(PropertyDictionary&)>& change) {
    const bool isStored =
        defaults_->update(storageKey, [change](const std::optional<PropertyValue>& current) {
            PropertyDictionary entries = dictionary(current);
            change(entries);
            return std::optional<PropertyValue>(std::move(entries));
        });
    center_.post(customEventSettingsChangedNotification);
    return isStored;
}

bool EventSettingsStore::deleteAllCustomEventSettings() {
    return defaults_->setValue(storageKey, PropertyDictionary());
}

}  // namespace hbr
