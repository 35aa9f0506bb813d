#include "X11Surface.h"

#include <X11/Xutil.h>

#include <cmath>
#include <string_view>

namespace platform {

namespace {

/// Milliseconds to wait for the answer of a window manager.
constexpr guint patience = 500;

bool hasWindowManager(GdkDisplay* display) {
    const std::string_view name =
        gdk_x11_screen_get_window_manager_name(gdk_display_get_default_screen(display));
    return name != "unknown";
}

bool isWithdrawn(GdkWindow* window) {
    const GdkAtom property = gdk_atom_intern_static_string("WM_STATE");
    GdkAtom type = GDK_NONE;
    gint format = 0, length = 0;
    guchar* data = nullptr;
    constexpr gulong bytesOfTwoValues = 8;
    const bool isSaid = gdk_property_get(window, property, property, 0, bytesOfTwoValues, FALSE, &type,
                                         &format, &length, &data);
    const std::unique_ptr<guchar, decltype(&g_free)> owner(data, g_free);
    // Values of 32 bits come as longs.
    const bool isKnown = isSaid && format == 32 && length >= gint{sizeof(long)};
    return !isKnown || *reinterpret_cast<const long*>(data) == WithdrawnState;
}

}  // namespace

X11Surface::X11Surface(GtkWindow* window) : window_(window) {
    gtk_window_set_decorated(window, FALSE);
    gtk_window_set_skip_taskbar_hint(window, TRUE);
    gtk_window_set_skip_pager_hint(window, TRUE);
    gtk_window_stick(window);
    putOnDesktop(true);
}

X11Surface::~X11Surface() {
    if (patience_) g_source_remove(patience_);
    watch(nullptr);
}

void X11Surface::place(const SurfacePlace& place) {
    const Output::Area& area = place.output.workArea;
    int x = area.x, y = area.y;
    if (place.position) {
        x += static_cast<int>(std::lround(place.position->x));
        y += static_cast<int>(std::lround(place.position->y));
    } else {
        x += place.isLeft() ? place.offset.horizontal
                            : area.width - place.offset.horizontal - place.size.width;
        y += place.isTop() ? place.offset.vertical : area.height - place.offset.vertical - place.size.height;
    }
    x_ = x - place.margin;
    y_ = y - place.margin;
    gtk_window_move(window_, x_, y_);
}

void X11Surface::setLevel(Level level) {
    level_ = level;
    wantsKeyboard_ = level == Level::withKeyboard;
    advance();
}

void X11Surface::setShown(bool isShown) {
    isShown_ = isShown;
    advance();
}

void X11Surface::advance() {
    if (step_ != Step::none) return;
    const bool isVisible = gtk_widget_get_visible(GTK_WIDGET(window_));
    const bool belongsOnDesktop = level_ == Level::desktop;
    if (isVisible && (!isShown_ || belongsOnDesktop != isOnDesktop_)) return begin(Step::withdrawing);
    if (!isVisible && isShown_) {
        putOnDesktop(belongsOnDesktop);
        return begin(Step::appearing);
    }
    takeKeyboard();
}

void X11Surface::begin(Step step) {
    GtkWidget* widget = GTK_WIDGET(window_);
    if (!gtk_widget_get_realized(widget)) gtk_widget_realize(widget);
    watch(gtk_widget_get_window(widget));
    if (step == Step::appearing) {
        gtk_window_move(window_, x_, y_);
        gtk_widget_show(widget);
    } else {
        gtk_widget_hide(widget);
    }
    step_ = step;
    if (!hasWindowManager(gtk_widget_get_display(widget))) return end(step);
    patience_ = g_timeout_add(
        patience,
        [](gpointer self) -> gboolean {
            auto* surface = static_cast<X11Surface*>(self);
            surface->patience_ = 0;
            surface->end(surface->step_);
            return G_SOURCE_REMOVE;
        },
        this);
}

void X11Surface::end(Step step) {
    if (step != step_) return;
    if (patience_) g_source_remove(patience_);
    patience_ = 0;
    step_ = Step::none;
    advance();
}

void X11Surface::putOnDesktop(bool isOnDesktop) {
    isOnDesktop_ = isOnDesktop;
    gtk_window_set_type_hint(window_,
                             isOnDesktop ? GDK_WINDOW_TYPE_HINT_DESKTOP : GDK_WINDOW_TYPE_HINT_UTILITY);
    gtk_window_set_keep_above(window_, !isOnDesktop);
    gtk_window_set_keep_below(window_, isOnDesktop);
    gtk_window_set_accept_focus(window_, !isOnDesktop);
    gtk_window_set_focus_on_map(window_, level_ == Level::withKeyboard);
}

void X11Surface::watch(GdkWindow* window) {
    if (window == watched_.get()) return;
    if (watched_) gdk_window_remove_filter(watched_.get(), filter, this);
    watched_ = retained(window);
    if (watched_) gdk_window_add_filter(window, filter, this);
}

void X11Surface::takeKeyboard() {
    if (!wantsKeyboard_ || !isShown_) return;
    wantsKeyboard_ = false;
    gtk_window_present_with_time(window_,
                                 gdk_x11_get_server_time(gtk_widget_get_window(GTK_WIDGET(window_))));
}

GdkFilterReturn X11Surface::filter(GdkXEvent* event, GdkEvent*, gpointer self) {
    auto* surface = static_cast<X11Surface*>(self);
    const auto* change = static_cast<const XPropertyEvent*>(event);
    if (surface->step_ == Step::none || change->type != PropertyNotify) return GDK_FILTER_CONTINUE;
    GdkDisplay* display = gdk_window_get_display(surface->watched_.get());
    if (change->atom != gdk_x11_get_xatom_by_name_for_display(display, "WM_STATE"))
        return GDK_FILTER_CONTINUE;
    surface->end(isWithdrawn(surface->watched_.get()) ? Step::withdrawing : Step::appearing);
    return GDK_FILTER_CONTINUE;
}

}  // namespace platform
