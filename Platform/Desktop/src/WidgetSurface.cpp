#include "WidgetSurface.h"

#include <gtk-layer-shell/gtk-layer-shell.h>

#include <cmath>

#include "MonitorNames.h"
#include "X11Surface.h"

namespace platform {

namespace {

class LayerSurface final : public WidgetSurface {
  public:
    explicit LayerSurface(GtkWindow* window) : window_(window) {
        gtk_layer_init_for_window(window);
        gtk_layer_set_namespace(window, g_get_prgname());
        gtk_layer_set_layer(window, GTK_LAYER_SHELL_LAYER_BOTTOM);
        gtk_layer_set_keyboard_mode(window, GTK_LAYER_SHELL_KEYBOARD_MODE_NONE);
    }

    void place(const SurfacePlace& place) override {
        GdkMonitor* monitor = monitorNamed(gdk_display_get_default(), place.output.name);
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

    void setShown(bool isShown) override { gtk_widget_set_visible(GTK_WIDGET(window_), isShown); }

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
};

/// The desktop decides about all of it.
class PlainSurface final : public WidgetSurface {
  public:
    explicit PlainSurface(GtkWindow* window) : window_(window) { gtk_window_set_decorated(window, FALSE); }

    void place(const SurfacePlace&) override {}
    void setShown(bool isShown) override { gtk_widget_set_visible(GTK_WIDGET(window_), isShown); }
    void setLevel(Level level) override {
        if (level == Level::withKeyboard) gtk_window_present(window_);
    }

  private:
    GtkWindow* window_;
};

}  // namespace

std::unique_ptr<WidgetSurface> WidgetSurface::make(SurfaceKind kind, GtkWindow* window) {
    switch (kind) {
        case SurfaceKind::layerShell:
            return std::make_unique<LayerSurface>(window);
        case SurfaceKind::x11Desktop:
            return std::make_unique<X11Surface>(window);
        case SurfaceKind::plainWindow:
            break;
    }
    return std::make_unique<PlainSurface>(window);
}

}  // namespace platform
