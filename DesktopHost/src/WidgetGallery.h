#pragma once

#include "WidgetCatalogue.h"

#include <Desktop/GalleryWindow.h>
#include <DesktopHost/PlacementsFile.h>
#include <WidgetHost/WidgetBundle.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace hbr {

/// The window of all widgets. Its previews show what the widgets would show on the desktop, or demonstration
/// events where there is nothing to show, and say so; it also says what this desktop lacks. Main thread.
class WidgetGallery {
  public:
    struct Actions {
        /// Keeps a change of the placements; the gallery is then shown them again.
        std::function<void(const PlacementsFile::Change&)> change;
        /// The user closed it.
        std::function<void()> closed;
    };

    /// Shows it in front. Takes the snapshots of `demonstration` once.
    WidgetGallery(platform::DesktopSession& session, const platform::WidgetDesk& desk,
                  const platform::WidgetBundle& bundle, const platform::WidgetBundle& demonstration,
                  const WidgetCatalogue& catalogue, bool isDemonstration, Actions actions);

    void present() { window_->present(); }
    /// Of the previews, to be played while this exists.
    const std::vector<std::string>& kinds() const { return kinds_; }
    void setEntry(const std::string& kind, const platform::WidgetEntry& entry);
    void setDemonstration(bool isDemonstration);
    void setPlaced(const std::vector<PlacedWidget>& placed);

  private:
    platform::GalleryWindow::Actions windowActions() const;
    std::string introduction() const;
    platform::View preview(const std::string& kind, const platform::ViewContext& context) const;

    const platform::WidgetBundle& bundle_;
    const WidgetCatalogue& catalogue_;
    const Actions actions_;
    const bool staysOnDesktop_;
    bool isDemonstration_;
    std::vector<std::string> kinds_;
    std::map<std::string, platform::WidgetContent> contents_;
    std::map<std::string, platform::WidgetContent> demonstrations_;
    std::unique_ptr<platform::GalleryWindow> window_;
};

}  // namespace hbr
