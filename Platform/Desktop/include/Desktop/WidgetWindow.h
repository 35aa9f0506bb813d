#pragma once

#include <Desktop/MenuItem.h>
#include <Desktop/WidgetPlacement.h>
#include <TimeAndText/Url.h>
#include <Views/View.h>
#include <Views/ViewContext.h>
#include <Views/WidgetFamily.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// The view that a widget shows; asked for again when the context (look, scale, family) or the content
/// changed, and at the moment that the view noted in the context. Timers tick without it.
using WidgetContent = std::function<View(const ViewContext& context)>;

/// Which widget a window shows.
struct WidgetIdentity {
    std::string kind;
    /// As people read it in the menu and hear it from a screen reader.
    std::string name;
    struct Family {
        WidgetFamily family;
        std::string name;
    };
    /// Those that the widget offers.
    std::vector<Family> families;
};

/// What the user did with a widget. The window changes nothing by itself: the owner keeps the change and
/// answers with setFamily, setPlacement or by destroying the window, which is allowed inside the call. An
/// absent function hides its entry in the menu.
struct WidgetActions {
    /// A row, the camera, the whole widget was tapped, or activated by keyboard or assistive tool.
    std::function<void(const Url&)> open;
    std::function<void(WidgetFamily)> changeFamily;
    /// To a corner, another output, or by dragging.
    std::function<void(const WidgetPlacement&)> move;
    std::function<void()> remove;
    std::function<void()> openGallery;
    /// First entries of the menu that was opened on a target, for instance on a row.
    std::function<std::vector<MenuItem>(const Url& target)> targetItems = nullptr;
    /// Last entries of the menu.
    std::function<std::vector<MenuItem>()> programItems = nullptr;
};

/// A widget on the desktop, made by a WidgetDesk; shown as soon as it has content. Main thread.
class WidgetWindow {
  public:
    virtual ~WidgetWindow() = default;

    virtual const WidgetIdentity& identity() const = 0;
    virtual WidgetFamily family() const = 0;
    virtual const WidgetPlacement& placement() const = 0;

    virtual void setContent(WidgetContent content) = 0;
    /// Asks the content for its view again, for instance after a setting of the views changed.
    virtual void invalidate() = 0;
    virtual void setFamily(WidgetFamily family) = 0;
    virtual void setPlacement(const WidgetPlacement& placement) = 0;
    /// A small mark in the corner that says `tooltip` under the pointer and to assistive tools; nothing takes
    /// it away.
    virtual void setBadge(std::optional<std::string> tooltip) = 0;
    /// On the desktop and not known to be hidden.
    virtual bool isVisible() const = 0;
};

}  // namespace platform
