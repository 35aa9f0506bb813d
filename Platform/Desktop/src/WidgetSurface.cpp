#include "WidgetSurface.h"

#include <gdk/gdkx.h>
#include <gtk-layer-shell/gtk-layer-shell.h>

#include <cmath>

namespace platform {

namespace {

class LayerSurface final : public WidgetSurface {
  public:
    LayerSurface(GtkWindow* window, const GtkOutputs& outputs) : window_(window), outputs_(outputs) {
        gtk_layer_init_for_window(window);
        gtk_layer_set_namespace(window, g_get_prgname());
        gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_BOTTOM);
        gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_NONE);
    }

    void place(const SurfacePlace& place) override {
        GdkMonitor* monitor = outputs_.monitor(place.output.name);
        if (monitor && monitor != gtk_layer_get_monitor(window_)) gtk_layer_set_monitor(window_, monitor);
        const bool isLeft = place.position || place.isLeft(), isTop = place.position || place.isTop();
        anchor(GTK_LAYER_SHELL_EDGE_LEFT, isLeft);
        anchor(GTK_LAYER_SHELL_EDGE_RIGHT, !isLeft);
        anchor(GTK_LAYER_SHELL_EDGE_TOP, isTop);
        anchor(GTK_LAYER_SHELL_EDGE_BOTTOM, !isTop);
        int horizontal = place.offset.horizontal, vertical = place.offset.vertical;
        if (place.position) {
            horizontal = static_cast<int>(std::lround(place.position->x));
            vertical = static_cast<int>(std::lround(place.position->y));
        }
        gtk_layer_set_margin(window_, isLeft ? GTK_LAYER_SHELL_EDGE_LEFT : GTK_LAYER_SHELL_EDGE_RIGHT,
                             horizontal - place.margin);
        gtk_layer_set_margin(window_, isTop ? GTK_LAYER_SHELL_EDGE_TOP : GTK_LAYER_SHELL_EDGE_BOTTOM,
                             vertical - place.margin);
    }

    void setLevel(Level level) override {
        gtk_layer_set_layer(
            window_, level == Level::desktop ? GTK_LAYER_SHELL_LAYER_BOTTOM : GTK_LAYER_SHELL_LAYER_TOP);
        gtk_layer_set_keyboard_mode(window_, level == Level::withKeyboard
                                                 ? GTK_LAYER_SHELL_KEYBOARD_MODE_EXCLUSIVE
                                                 : GTK_LAYER_SHELL_KEYBOARD_MODE_NONE);
    }

  private:
    void anchor(GtkLayerShellEdge edge, bool isAnchored) {
        if (bool(gtk_layer_get_anchor(window_, edge)) != isAnchored)
            gtk_layer_set_anchor(window_, edge, isAnchored);
    }

    GtkWindow* window_;
    const GtkOutputs& outputs_;
};

class X11Surface final : public WidgetSurface {
  public:
    explicit X11Surface(GtkWindow* window) : window_(window) {
        gtk_window_set_decorated(window, FALSE);
        gtk_window_set_skip_taskbar_hint(window, TRUE);
        gtk_window_set_skip_pager_hint(window, TRUE);
        gtk_window_stick(window);
        putOnDesktop(true);
    }

    void place(const SurfacePlace& place) override {
        const Output::Area& area = place.output.workArea;
        int x = area.x, y = area.y;
        if (place.position) {
            x += static_cast<int>(std::lround(place.position->x));
            y += static_cast<int>(std::lround(place.position->y));
        } else {
            x += place.isLeft() ? place.offset.horizontal
                                : area.width - place.offset.horizontal - place.size.width;
            y += place.isTop() ? place.offset.vertical
                               : area.height - place.offset.vertical - place.size.height;
        }
        x_ = x - place.margin;
        y_ = y - place.margin;
        gtk_window_move(window_, x_, y_);
    }

    void setLevel(Level level) override {
        const bool isOnDesktop = level == Level::desktop;
        if (isOnDesktop != isOnDesktop_) {
            // Window managers read the type when a window is mapped.
            GtkWidget* widget = GTK_WIDGET(window_);
            const bool isShown = gtk_widget_get_visible(widget);
            gtk_widget_hide(widget);
            putOnDesktop(isOnDesktop);
            if (isShown) {
                gtk_window_move(window_, x_, y_);
                gtk_widget_show(widget);
            }
        }
        if (level == Level::withKeyboard && gtk_widget_get_visible(GTK_WIDGET(window_)))
            gtk_window_present_with_time(window_,
                                         gdk_x11_get_server_time(gtk_widget_get_window(GTK_WIDGET(window_))));
    }

  private:
    void putOnDesktop(bool isOnDesktop) {
        isOnDesktop_ = isOnDesktop;
        gtk_window_set_type_hint(window_,
                                 isOnDesktop ? GDK_WINDOW_TYPE_HINT_DESKTOP : GDK_WINDOW_TYPE_HINT_UTILITY);
        gtk_window_set_keep_above(window_, !isOnDesktop);
        gtk_window_set_keep_below(window_, isOnDesktop);
        gtk_window_set_accept_focus(window_, !isOnDesktop);
        gtk_window_set_focus_on_map(window_, !isOnDesktop);
    }

    GtkWindow* window_;
    bool isOnDesktop_ = true;
    int x_ = 0;
    int y_ = 0;
};

/// The desktop decides about all of it.
class PlainSurface final : public WidgetSurface {
  public:
    explicit PlainSurface(GtkWindow* window) : window_(window) { gtk_window_set_decorated(window, FALSE); }

    void place(const SurfacePlace&) override {}
    void setLevel(Level level) override {
        if (level == Level::withKeyboard) gtk_window_present(window_);
    }

  private:
    GtkWindow* window_;
};

}  // namespace

std::unique_ptr<WidgetSurface> WidgetSurface::make(SurfaceKind kind, GtkWindow* window,
                                                   const GtkOutputs& outputs) {
    switch (kind) {
        case SurfaceKind::layerShell:
            return std::make_unique<LayerSurface>(window, outputs);
        case SurfaceKind::x11Desktop:
            return std::make_unique<X11Surface>(window);
        case SurfaceKind::plainWindow:
            break;
    }
    return std::make_unique<PlainSurface>(window);
}

}  // namespace platform
