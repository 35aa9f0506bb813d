#pragma once

#include <Desktop/DesktopSession.h>
#include <Desktop/WidgetWindow.h>
#include <System/Environment.h>
#include <System/WakeSchedule.h>
#include <Views/PictureLibrary.h>

#include <memory>
#include <string>

namespace platform {

/// Texts of the widgets' context menu.
struct WidgetMenuTexts {
    std::string size = "Size";
    std::string moveTo = "Move to";
    std::string topStart = "Top left";
    std::string topEnd = "Top right";
    std::string bottomStart = "Bottom left";
    std::string bottomEnd = "Bottom right";
    std::string screen = "Screen";
    std::string openGallery = "Add widgets…";
    std::string remove = "Remove widget";
    /// In place of moving, where the desktop decides about it.
    std::string cannotPlace = "The desktop decides where this window stands";
};

/// The widgets on the desktop: makes their windows, stacks those of a corner, and lifts them for the
/// keyboard. Main thread; outlives its windows.
class WidgetDesk {
  public:
    struct Options {
        /// Clock and locale of the drawings.
        EnvironmentRef environment;
        std::shared_ptr<const PictureLibrary> pictures;
        /// Of the language of the texts.
        bool isRightToLeft = false;
        WidgetMenuTexts texts = {};
        /// Logical pixels per point, before the desktop's text scaling.
        double widgetScale = 1.25;
        /// Wakes for what the widgets show; absent: one of their own.
        std::shared_ptr<WakeSchedule> wakes = nullptr;
    };

    static std::unique_ptr<WidgetDesk> make(DesktopSession& session, Options options);
    virtual ~WidgetDesk() = default;

    virtual std::unique_ptr<WidgetWindow> add(WidgetIdentity identity, WidgetFamily family,
                                              const WidgetPlacement& placement, WidgetActions actions) = 0;

    /// Above the other windows and with the keyboard, until lower() or Escape: Tab and arrows go from target
    /// to target and from widget to widget, Enter opens, the menu key shows the menu. The keyboard goes to
    /// `first`, else to the first widget.
    virtual void lift(WidgetWindow* first = nullptr) = 0;
    virtual void lower() = 0;
    virtual bool isLifted() const = 0;

    virtual const std::shared_ptr<WakeSchedule>& wakes() const = 0;
    /// What content for a gallery or a test would be drawn with, once.
    virtual ViewContext contextFor(WidgetFamily family) const = 0;
};

}  // namespace platform
