#include "HostSignals.h"

namespace hbr {

namespace {

/// A burst of changes of the file of placements is over after this many seconds.
constexpr double placementsQuiet = 0.1;

}  // namespace

HostSignals::HostSignals(const platform::Environment& environment, CoreServices& core,
                         const std::filesystem::path& placements, const Actions& actions)
    : clockChange_(actions.clockChanged),
      zoneChange_(environment, actions.zoneOrFormatChanged),
      clockFormatChange_(actions.zoneOrFormatChanged),
      termination_(actions.termination),
      settingsWatch_(reloadAfterSettingsChange(core)),
      placementsWatch_(
          {placements}, [this, changed = actions.placementsChanged](const auto&) { calls_.later(changed); },
          placementsQuiet, environment.diagnostics),
      reloads_(core.center().observe(didReloadEventsNotification,
                                     [this, didReload = actions.didReload] { calls_.later(didReload); })) {}

}  // namespace hbr
