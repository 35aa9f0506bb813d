#pragma once

#include "HostCommandLine.h"
#include "WidgetCatalogue.h"

#include <DesktopHost/PlacementsFile.h>
#include <HbrCore/CoreServices.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>

#include <memory>
#include <string>

namespace hbr {

/// The widgets, alerts and cards of one desktop session, from the moment the program owns its name on the
/// bus. Main thread.
class RunningHost {
  public:
    struct World {
        platform::EnvironmentRef environment;
        CoreServices& core;
        const HeedbannerWidgetBundle& bundle;
        const WidgetCatalogue& catalogue;
        PlacementsFile placements;
        /// For restarting the program.
        char** argv;
    };

    explicit RunningHost(World world);
    ~RunningHost();

    /// Shows what was asked for; throws HostFailure where there is no desktop.
    void start(const HostRequest& request);
    /// What other processes ask for. A token, or nothing, comes before each.
    void useActivationToken(const std::string& token);
    void openUrl(const std::string& url);
    void snooze(const std::string& eventId, const std::string& how);
    void reload();
    void focus(const std::string& widget);
    void showGallery();
    /// The program was started again: the gallery where no widget is placed.
    void activate();
    void quit();

    bool hasEnded() const;

  private:
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace hbr
