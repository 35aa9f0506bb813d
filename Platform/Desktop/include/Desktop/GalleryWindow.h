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
};

struct GalleryItem {
    WidgetIdentity identity;
    std::string description;
    /// Draws the preview of the family in its context.
    WidgetContent preview;
};

/// Every widget in every family, with a live preview and a button that adds it. Main thread.
class GalleryWindow {
  public:
    struct Actions {
        /// `kind` and family of the button.
        std::function<void(const std::string& kind, WidgetFamily family)> add;
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
    /// Draws the previews anew.
    virtual void invalidate() = 0;
};

}  // namespace platform
