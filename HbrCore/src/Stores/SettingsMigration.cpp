#include <HbrCore/Stores/SettingsMigration.h>

#include <HbrCore/Stores/SettingsTable.h>

#include <cstdint>
#include <optional>
#include <string>

namespace hbr {

using platform::PropertyDictionary;
using platform::PropertyValue;

namespace {

constexpr std::string_view obsoleteMinutesKey = "timeOffset";

bool isSet(const std::optional<PropertyValue>& marker) {
    return marker && marker->asBool() == true;
}

bool isMigrated(const PropertyDictionary& standard) {
    const PropertyValue* marker = standard.find(didMigrateToSharedDefaultsKey);
    return marker && marker->asBool() == true;
}

void copy(std::string_view key, const PropertyDictionary& from, PropertyDictionary& to) {
    if (const PropertyValue* value = from.find(key)) {
        to.set(key, *value);
    } else {
        to.remove(key);
    }
}

void copySettings(PropertyDictionary& standard, PropertyDictionary& shared) {
    for (const SettingFacts& setting : SettingsTable::facts)
        copy(setting.key, standard, shared);
    // Hidden occurrences were never kept in the standard domain.
    copy(SettingsTable::customReminders, standard, shared);
    copy(SettingsTable::eventSettings, standard, shared);
    standard.set(didMigrateToSharedDefaultsKey, true);
}

/// False when the stored number of minutes is too large.
bool convertMinutes(PropertyDictionary& standard, PropertyDictionary& shared) {
    const PropertyValue* stored = standard.find(obsoleteMinutesKey);
    const auto minutes = stored ? stored->asInteger() : std::nullopt;
    if (!minutes) return true;
    std::int64_t seconds = 0;
    if (__builtin_mul_overflow(*minutes, std::int64_t{60}, &seconds)) return false;
    shared.set(SettingsTable::timeOffsetSeconds.key, seconds);
    standard.remove(obsoleteMinutesKey);
    return true;
}

/// Where the marker cannot be stored, every start would copy old settings over newer ones.
bool canStoreMarker(platform::DefaultsDomain& standard) {
    return standard.update(didMigrateToSharedDefaultsKey, [](const std::optional<PropertyValue>& marker) {
        return std::optional(PropertyValue(isSet(marker)));
    });
}

}  // namespace

void migrateSettings(const DefaultsDomains& domains, platform::DiagnosticsSink& diagnostics) {
    const auto obsolete = domains.standard->value(obsoleteMinutesKey);
    const bool needsCopy = !isSet(domains.standard->value(didMigrateToSharedDefaultsKey));
    if (!needsCopy && !(obsolete && obsolete->asInteger())) return;
    if (needsCopy && !canStoreMarker(*domains.standard)) return;

    bool isConverted = true;
    platform::DefaultsDomain::updateTogether(*domains.standard, *domains.shared,
                                             [&](PropertyDictionary& standard, PropertyDictionary& shared) {
                                                 // Another process may have been faster.
                                                 if (!isMigrated(standard)) copySettings(standard, shared);
                                                 isConverted = convertMinutes(standard, shared);
                                             });
    if (isConverted) return;
    diagnostics.report({.severity = platform::Diagnostic::Severity::warning,
                        .file = domains.standard->file(),
                        .line = std::nullopt,
                        .field = std::string(obsoleteMinutesKey),
                        .text = "this number of minutes is too large; it was left as it is"});
}

void markMigratedWithoutOldSettings(const DefaultsDomains& domains) {
    if (domains.standard->values().empty()) domains.standard->setValue(didMigrateToSharedDefaultsKey, true);
}

}  // namespace hbr
