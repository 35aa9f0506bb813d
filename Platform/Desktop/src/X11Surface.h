#pragma once

#include <gdk/gdkx.h>

#include "GObjects.h"
#include "WidgetSurface.h"

namespace platform {

/// A window of the type "desktop" below all others, which becomes another type to be lifted above them.
///
/// Window managers read the type when a window is mapped, so it is withdrawn and mapped again. They forget a
/// withdrawn window's state in their own time: mapped again before that, it would lose its new state, or the
/// keyboard. Hence each step waits until the window manager has said in WM_STATE that the last one is over.
class X11Surface final : public WidgetSurface {
  public:
    explicit X11Surface(GtkWindow* window);
    ~X11Surface() override;

    void place(const SurfacePlace& place) override;
    void setLevel(Level level) override;
    void setShown(bool isShown) override;

  private:
    enum class Step { none, withdrawing, appearing };

    void advance();
    void begin(Step step);
    void end(Step step);
    void putOnDesktop(bool isOnDesktop);
    void watch(GdkWindow* window);
    void takeKeyboard();
    static GdkFilterReturn filter(GdkXEvent* event, GdkEvent*, gpointer self);

    GtkWindow* window_;
    Object<GdkWindow> watched_;
    Level level_ = Level::desktop;
    bool isShown_ = false;
    bool isOnDesktop_ = true;
    bool wantsKeyboard_ = false;
    Step step_ = Step::none;
    guint patience_ = 0;
    int x_ = 0;
    int y_ = 0;
};

}  // namespace platform
