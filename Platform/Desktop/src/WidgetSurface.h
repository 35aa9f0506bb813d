#pragma once

#include <Desktop/DesktopSession.h>
#include <Desktop/WidgetPlacement.h>
#include <gtk/gtk.h>

#include <memory>
#include <optional>

#include "CornerStack.h"

namespace platform {

/// Where to place a window.
struct SurfacePlace {
    Output output;
    Corner corner = Corner::topEnd;
    bool isRightToLeft = false;
    CornerOffset offset = {};
    /// Instead of corner and offset: the widget's top left corner in the work area.
    std::optional<Point> position = {};
    /// Of the widget, without the margin.
    StackedSize size = {};
    /// Around the widget, inside the window.
    int margin = 0;

    bool isLeft() const {
        const bool isStart = corner == Corner::topStart || corner == Corner::bottomStart;
        return isStart != isRightToLeft;
    }
    bool isTop() const { return corner == Corner::topStart || corner == Corner::topEnd; }
};

/// How a window becomes part of the desktop, one kind for each SurfaceKind.
class WidgetSurface {
  public:
    enum class Level {
        /// Below all windows.
        desktop,
        /// Above the windows.
        lifted,
        /// Above the windows, and the keyboard is here.
        withKeyboard,
    };

    /// To be called before the window is realized.
    static std::unique_ptr<WidgetSurface> make(SurfaceKind kind, GtkWindow* window);
    virtual ~WidgetSurface() = default;

    virtual void place(const SurfacePlace& place) = 0;
    virtual void setShown(bool isShown) = 0;
    virtual void setLevel(Level level) = 0;
};

}  // namespace platform
