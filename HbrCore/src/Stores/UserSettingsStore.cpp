#include <HbrCore/Stores/UserSettingsStore.h>

#include <HbrCore/Stores/SettingsMigration.h>

#include <utility>

namespace hbr {

UserSettingsStore::UserSettingsStore(DefaultsDomains domains,
                                     std::shared_ptr<platform::DiagnosticsSink> diagnostics)
    : domains_(std::move(domains)) {
    migrateSettings(domains_, *diagnostics);
}

void UserSettingsStore::resetAll() {
    for (const SettingFacts& setting : Table::facts)
        domains_.standard->removeValue(setting.key);
}

}  // namespace hbr
