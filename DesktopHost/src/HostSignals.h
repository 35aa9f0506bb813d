#pragma once

#include "MainQueueCalls.h"

#include <HbrCore/CoreServices.h>
#include <System/ClockChange.h>
#include <System/DesktopClock.h>
#include <System/FileWatcher.h>
#include <System/TerminationRequest.h>
#include <System/ZoneChange.h>

#include <filesystem>
#include <functional>
#include <memory>

namespace hbr {

/// What the running host hears of while it runs. Every action is called on the main queue, never inside of
/// what caused it, and not after this is destroyed. Main thread.
class HostSignals {
  public:
    struct Actions {
        /// The clock was set, or the machine woke up from suspend.
        std::function<void()> clockChanged;
        /// The time zone or the clock's format is no longer the one that the program started with.
        std::function<void()> zoneOrFormatChanged;
        /// The file of placements was written.
        std::function<void()> placementsChanged;
        std::function<void()> didReload;
        /// The process is asked to end.
        std::function<void()> termination;
    };

    HostSignals(const platform::Environment& environment, CoreServices& core,
                const std::filesystem::path& placements, const Actions& actions);

  private:
    MainQueueCalls calls_;
    platform::ClockChange clockChange_;
    platform::ZoneChange zoneChange_;
    platform::ClockFormatChange clockFormatChange_;
    platform::TerminationRequest termination_;
    /// Reloads the events after a change of the settings.
    std::shared_ptr<void> settingsWatch_;
    platform::FileWatcher placementsWatch_;
    platform::NotificationCenter::Observation reloads_;
};

}  // namespace hbr
