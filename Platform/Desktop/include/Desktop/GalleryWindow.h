#pragma once

#include <Desktop/WidgetDesk.h>
#include <Desktop/WidgetWindow.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

struct GalleryTexts {
    std::string title = "Widgets";
    /// Below the title; may be empty.
    std::string introduction;
    std::string add = "Add";
    std::string remove = "Remove";
    /// Beside the name of a family that is on the desktop.
    std::string placed = "On the desktop";
};

struct GalleryItem {
    WidgetIdentity identity;
    std::string description;
    /// Draws the preview of the family in its context.
    WidgetContent preview;
};

/// A widget that is on the desktop.
struct GalleryChoice {
    std::string kind;
    WidgetFamily family = WidgetFamily::systemMedium;

    friend bool operator==(const GalleryChoice&, const GalleryChoice&) = default;
};

/// A page for each widget, with a live preview in every family and a button that adds it, or removes it where
/// it is on the desktop. A page fits a screen of 1280 x 720. Main thread.
class GalleryWindow {
  public:
    struct Actions {
        /// `kind` and family of the button.
        std::function<void(const std::string& kind, WidgetFamily family)> add;
        std::function<void(const std::string& kind, WidgetFamily family)> remove;
        /// The user closed it; destroying the window is allowed inside the call.
        std::function<void()> closed;
    };

    /// Shows it in front.
    static std::unique_ptr<GalleryWindow> show(DesktopSession& session, const WidgetDesk& desk,
                                               GalleryTexts texts, std::vector<GalleryItem> items,
                                               Actions actions);
    virtual ~GalleryWindow() = default;

    virtual void present() = 0;
    virtual void setIntroduction(const std::string& introduction) = 0;
    /// Those on the desktop, whose buttons remove.
    virtual void setPlaced(std::vector<GalleryChoice> placed) = 0;
    /// Draws the previews again.
    virtual void invalidate() = 0;
};

}  // namespace platform
