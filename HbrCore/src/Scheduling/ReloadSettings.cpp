#include <HbrCore/Scheduling/ReloadSettings.h>

#include <HbrCore/Stores/UserSettingsStore.h>

namespace hbr {

ReloadSettings ReloadSettings::of(const UserSettingsStore& settings,
                                  const EventSettingsStore& eventSettings) {
    return {.days = settings.upcomingEventsDaysFilter(),
            .alerts = AlertSettings::of(settings),
            // No rules is what most users have, and no error to log.
            .excludeRules = settings.hasExcludeRules() ? settings.excludeRules() : std::vector<FilterRule>{},
            .eventSettings = eventSettings.customSettings(),
            .isScreenshotMode = settings.debugScreenshotMode()};
}

}  // namespace hbr
