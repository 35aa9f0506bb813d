#pragma once

#include <Desktop/DesktopAppearance.h>
#include <gtk/gtk.h>

#include <vector>

#include "GObjects.h"
#include "Observers.h"
#include "PortalSettings.h"

namespace platform {

class GtkAppearance final : public DesktopAppearance {
  public:
    /// Also hands the look to the views (their font) and to the toolkit's own windows (light or dark).
    explicit GtkAppearance(GtkSettings* settings);

    DesktopLook current() const override { return look_; }
    std::shared_ptr<void> observe(std::function<void()> changed) override;

  private:
    DesktopLook read() const;
    void refresh();
    void apply() const;

    GtkSettings* settings_;
    bool prefersDarkByItself_;
    PortalSettings portal_;
    std::vector<SignalConnection> signals_;
    Observers observers_;
    DesktopLook look_;
};

}  // namespace platform
