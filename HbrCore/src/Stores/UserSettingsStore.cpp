#include <HbrCore/Stores/UserSettingsStore.h>

#include <HbrCore/Stores/SettingsMigration.h>

#include <utility>

namespace hbr {

UserSettingsStore::UserSettingsStore(DefaultsDomains domains,
                                     std::shared_ptr<platform::DiagnosticsSink> diagnostics)
    : domains_(std::move(domains)),
      activeCalendarIdentifiers_(std::string(keys[0]), {}, true, domains_),
      activeReminderListIdentifiers_(std::string(keys[1]), {}, true, domains_),
      timeOffsetSeconds_(std::string(keys[2]), 60, true, domains_),
      showOnlyEventsWithAlert_(std::string(keys[3]), false, true, domains_),
      showOnlyAcceptedEvents_(std::string(keys[4]), false, true, domains_),
      showOnlyEventsWithVideoConference_(std::string(keys[5]), false, true, domains_),
      upcomingEventsDaysFilter_(std::string(keys[6]), 7, true, domains_),
      includeTravelTime_(std::string(keys[7]), false, true, domains_),
      customSnoozeTimes_(std::string(keys[8]), {}, true, domains_),
      defaultSnooze1_(std::string(keys[9]), 1, true, domains_),
      defaultSnooze2_(std::string(keys[10]), 5, true, domains_),
      excludeRules_(std::string(keys[11]), {}, true, domains_),
      debugScreenshotMode_(std::string(keys[12]), false, true, domains_),
      keyboardShortcutsDelay_(std::string(keys[13]), 1, false, domains_) {
    migrateSettings(domains_, *diagnostics);
}

void UserSettingsStore::resetAll() {
    for (std::string_view key : keys)
        domains_.standard->removeValue(key);
}

}  // namespace hbr
