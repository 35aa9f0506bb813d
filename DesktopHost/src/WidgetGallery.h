#pragma once

#include <Desktop/GalleryWindow.h>
#include <WidgetHost/WidgetBundle.h>

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace hbr {

/// The window of all widgets. Its previews show what the widgets would show on the desktop, or demonstration
/// events where there is nothing to show, and say so; it also says what this desktop lacks. Main thread.
class WidgetGallery {
  public:
    /// Shows it in front. `demonstration` is asked for its snapshots once.
    WidgetGallery(platform::DesktopSession& session, const platform::WidgetDesk& desk,
                  const platform::WidgetBundle& bundle, const platform::WidgetBundle& demonstration,
                  bool isDemonstration, platform::GalleryWindow::Actions actions);

    void present() { window_->present(); }
    /// Of the previews, to be played while this exists.
    const std::vector<std::string>& kinds() const { return kinds_; }
    void setEntry(const std::string& kind, const platform::WidgetEntry& entry);
    void setDemonstration(bool isDemonstration);
    void setPlaced(std::vector<platform::GalleryChoice> placed) { window_->setPlaced(std::move(placed)); }

  private:
    std::string introduction() const;
    platform::View preview(const std::string& kind, const platform::ViewContext& context) const;

    const platform::WidgetBundle& bundle_;
    const bool staysOnDesktop_;
    bool isDemonstration_;
    std::vector<std::string> kinds_;
    std::map<std::string, platform::WidgetContent> contents_;
    std::map<std::string, platform::WidgetContent> demonstrations_;
    std::unique_ptr<platform::GalleryWindow> window_;
};

}  // namespace hbr
