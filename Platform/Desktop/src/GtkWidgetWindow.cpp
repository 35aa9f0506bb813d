#include "GtkWidgetWindow.h"

#include <cmath>
#include <utility>

#include "GtkWidgetDesk.h"
#include "WidgetMenu.h"

namespace platform {

namespace {

/// Logical pixels that the pointer goes before a press becomes a drag.
constexpr double dragThreshold = 8;

GtkWidget* makeWindow() {
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    gtk_widget_set_app_paintable(window, TRUE);
    if (GdkVisual* visual = gdk_screen_get_rgba_visual(gtk_widget_get_screen(window)))
        gtk_widget_set_visual(window, visual);
    gtk_window_set_resizable(GTK_WINDOW(window), FALSE);
    gtk_widget_add_events(window, GDK_VISIBILITY_NOTIFY_MASK | GDK_BUTTON_PRESS_MASK);
    GtkWidget* child = gtk_fixed_new();
    gtk_widget_show(child);
    gtk_container_add(GTK_CONTAINER(window), child);
    return window;
}

GtkFixed* childOf(GtkWidget* window) {
    return GTK_FIXED(gtk_bin_get_child(GTK_BIN(window)));
}

}  // namespace

GtkWidgetWindow::GtkWidgetWindow(GtkWidgetDesk& desk, WidgetIdentity identity, WidgetFamily family,
                                 const WidgetPlacement& placement, WidgetActions actions)
    : desk_(desk),
      identity_(std::move(identity)),
      family_(family),
      placement_(placement),
      actions_(std::move(actions)),
      window_(makeWindow()),
      canvas_(childOf(window_), identity_.name, desk.wakes(),
              [this](const Url& url) {
                  // What opens wants the keyboard and the front.
                  desk_.lower();
                  if (const auto open = actions_.open) open(url);
              }),
      surface_(WidgetSurface::make(desk.capabilities().surfaceKind, GTK_WINDOW(window_))) {
    gtk_window_set_title(GTK_WINDOW(window_), identity_.name.c_str());
    const auto connect = [this](const char* signal, GCallback handler) {
        g_signal_connect(window_, signal, handler, this);
    };
    connect("notify::scale-factor", G_CALLBACK(+[](GtkWidget*, GParamSpec*, gpointer self) {
                static_cast<GtkWidgetWindow*>(self)->invalidate();
            }));
    // The toolkit hides the focus of a window that it maps.
    g_signal_connect_after(window_, "map", G_CALLBACK(+[](GtkWidget*, gpointer self) {
                               static_cast<GtkWidgetWindow*>(self)->showFocus();
                           }),
                           this);
    connect("visibility-notify-event",
            G_CALLBACK(+[](GtkWidget*, GdkEventVisibility* event, gpointer self) -> gboolean {
                static_cast<GtkWidgetWindow*>(self)->canvas_.setObscured(event->state ==
                                                                         GDK_VISIBILITY_FULLY_OBSCURED);
                return FALSE;
            }));
    connect("key-press-event", G_CALLBACK(+[](GtkWidget*, GdkEventKey* event, gpointer self) -> gboolean {
                return static_cast<GtkWidgetWindow*>(self)->pressed(event);
            }));
    connect("button-press-event",
            G_CALLBACK(+[](GtkWidget*, GdkEventButton* event, gpointer self) -> gboolean {
                if (!gdk_event_triggers_context_menu(reinterpret_cast<GdkEvent*>(event))) return FALSE;
                static_cast<GtkWidgetWindow*>(self)->showMenu(reinterpret_cast<GdkEvent*>(event));
                return TRUE;
            }));
    connect("delete-event", G_CALLBACK(+[](GtkWidget*, GdkEvent*, gpointer self) -> gboolean {
                static_cast<GtkWidgetWindow*>(self)->closedByDesktop();
                return TRUE;
            }));
    startDragging();
}

GtkWidgetWindow::~GtkWidgetWindow() {
    desk_.forget(*this);
    if (menu_) gtk_widget_destroy(menu_);
    if (dragGesture_) {
        g_signal_handlers_disconnect_by_data(dragGesture_, this);
        g_object_unref(dragGesture_);
    }
    g_signal_handlers_disconnect_by_data(window_, this);
    gtk_widget_destroy(window_);
}

void GtkWidgetWindow::setContent(WidgetContent content) {
    content_ = std::move(content);
    invalidate();
}

void GtkWidgetWindow::invalidate() {
    if (!content_) return;
    update();
    desk_.restack();
}

void GtkWidgetWindow::update() {
    const int deviceScale = gtk_widget_get_scale_factor(window_);
    WidgetCanvas::Look look{desk_.contextFor(family_), desk_.scale(), deviceScale, !desk_.isComposited()};
    look.context.scale = look.scale * deviceScale;
    canvas_.show(content_, look);
    setInputRegion();
}

void GtkWidgetWindow::setInputRegion() {
    const auto [width, height] = canvas_.size();
    const cairo_rectangle_int_t rectangle{canvas_.margin(), canvas_.margin(), width, height};
    cairo_region_t* region = cairo_region_create_rectangle(&rectangle);
    gtk_widget_input_shape_combine_region(window_, region);
    cairo_region_destroy(region);
}

void GtkWidgetWindow::setFamily(WidgetFamily family) {
    if (family == family_) return;
    family_ = family;
    invalidate();
}

void GtkWidgetWindow::setPlacement(const WidgetPlacement& placement) {
    placement_ = placement;
    desk_.restack();
}

void GtkWidgetWindow::setBadge(std::optional<std::string> tooltip) {
    canvas_.setBadge(std::move(tooltip));
}

bool GtkWidgetWindow::isVisible() const {
    return gtk_widget_get_mapped(window_) && !canvas_.isObscured();
}

void GtkWidgetWindow::lookChanged() {
    canvas_.forget();
    if (content_) update();
}

void GtkWidgetWindow::standAt(std::optional<SurfacePlace> place) {
    if (drag_ && drag_->hasMoved) return;
    place_ = std::move(place);
    if (!place_) return surface_->setShown(false);
    place_->margin = canvas_.margin();
    surface_->place(*place_);
    surface_->setShown(true);
}

void GtkWidgetWindow::setLevel(WidgetSurface::Level level) {
    level_ = level;
    surface_->setLevel(level);
    showFocus();
}

void GtkWidgetWindow::showFocus() {
    gtk_window_set_focus_visible(GTK_WINDOW(window_), level_ == WidgetSurface::Level::withKeyboard);
}

void GtkWidgetWindow::focusFirst(bool fromEnd) {
    TapButtons& buttons = canvas_.buttons();
    if (buttons.count() > 0) buttons.focus(fromEnd ? buttons.count() - 1 : 0);
}

gboolean GtkWidgetWindow::pressed(GdkEventKey* event) {
    const bool isRightToLeft = desk_.isRightToLeft();
    switch (event->keyval) {
        case GDK_KEY_Escape:
            desk_.lower();
            return TRUE;
        case GDK_KEY_Tab:
        case GDK_KEY_Down:
            moveFocus(1);
            return TRUE;
        case GDK_KEY_ISO_Left_Tab:
        case GDK_KEY_Up:
            moveFocus(-1);
            return TRUE;
        case GDK_KEY_Right:
            moveFocus(isRightToLeft ? -1 : 1);
            return TRUE;
        case GDK_KEY_Left:
            moveFocus(isRightToLeft ? 1 : -1);
            return TRUE;
        case GDK_KEY_Return:
        case GDK_KEY_KP_Enter:
        case GDK_KEY_space:
            // At once; the toolkit's button would show itself pressed for a while first.
            canvas_.buttons().activateFocused();
            return TRUE;
        case GDK_KEY_F10:
            if (!(event->state & GDK_SHIFT_MASK)) return FALSE;
            [[fallthrough]];
        case GDK_KEY_Menu:
            showMenu(nullptr);
            return TRUE;
        default:
            return FALSE;
    }
}

void GtkWidgetWindow::moveFocus(int steps) {
    TapButtons& buttons = canvas_.buttons();
    const auto focused = buttons.focused();
    const long next = focused     ? static_cast<long>(*focused) + steps
                      : steps > 0 ? 0
                                  : static_cast<long>(buttons.count()) - 1;
    gtk_window_set_focus_visible(GTK_WINDOW(window_), TRUE);
    if (next >= 0 && next < static_cast<long>(buttons.count()))
        buttons.focus(static_cast<std::size_t>(next));
    else
        desk_.moveKeyboard(*this, steps);
}

std::optional<Url> GtkWidgetWindow::targetOf(const GdkEvent* event) const {
    // The focus that a widget on the desktop keeps is not seen there.
    const bool isByKeyboard = level_ == WidgetSurface::Level::withKeyboard && !event;
    const TapButtons& buttons = canvas_.buttons();
    return isByKeyboard || buttons.hovered() ? buttons.current() : std::nullopt;
}

void GtkWidgetWindow::showMenu(const GdkEvent* event) {
    if (menu_) gtk_widget_destroy(menu_);
    menu_ = makeWidgetMenu({identity_, family_, placement_, actions_, desk_.menuTexts(),
                            desk_.outputs().all(), desk_.capabilities().canPlace, targetOf(event)});
    gtk_menu_attach_to_widget(GTK_MENU(menu_), window_, nullptr);
    g_signal_connect(menu_, "destroy", G_CALLBACK(+[](GtkWidget* menu, gpointer self) {
                         auto* window = static_cast<GtkWidgetWindow*>(self);
                         if (window->menu_ == menu) window->menu_ = nullptr;
                     }),
                     this);
    if (event)
        gtk_menu_popup_at_pointer(GTK_MENU(menu_), event);
    else
        gtk_menu_popup_at_widget(GTK_MENU(menu_), GTK_WIDGET(childOf(window_)), GDK_GRAVITY_CENTER,
                                 GDK_GRAVITY_NORTH_WEST, nullptr);
}

void GtkWidgetWindow::startDragging() {
    if (desk_.capabilities().surfaceKind == SurfaceKind::layerShell) return;
    dragGesture_ = gtk_gesture_drag_new(window_);
    gtk_event_controller_set_propagation_phase(GTK_EVENT_CONTROLLER(dragGesture_), GTK_PHASE_CAPTURE);
    gtk_gesture_single_set_button(GTK_GESTURE_SINGLE(dragGesture_), GDK_BUTTON_PRIMARY);
    const auto connect = [this](const char* signal, GCallback handler) {
        g_signal_connect(dragGesture_, signal, handler, this);
    };
    connect("drag-update", G_CALLBACK(+[](GtkGestureDrag*, double, double, gpointer self) {
                static_cast<GtkWidgetWindow*>(self)->drag();
            }));
    connect("drag-end", G_CALLBACK(+[](GtkGestureDrag*, double, double, gpointer self) {
                static_cast<GtkWidgetWindow*>(self)->endDragging(true);
            }));
    connect("cancel", G_CALLBACK(+[](GtkGesture*, GdkEventSequence*, gpointer self) {
                static_cast<GtkWidgetWindow*>(self)->endDragging(false);
            }));
}

// Root coordinates: those of the window move with it.
void GtkWidgetWindow::drag() {
    GdkEventSequence* sequence = gtk_gesture_get_last_updated_sequence(dragGesture_);
    const GdkEvent* event = gtk_gesture_get_last_event(dragGesture_, sequence);
    Point pointer;
    if (!event || !gdk_event_get_root_coords(event, &pointer.x, &pointer.y)) return;
    if (!drag_) {
        int x = 0, y = 0;
        gtk_window_get_position(GTK_WINDOW(window_), &x, &y);
        double offsetX = 0, offsetY = 0;
        gtk_gesture_drag_get_offset(GTK_GESTURE_DRAG(dragGesture_), &offsetX, &offsetY);
        drag_ = Drag{{pointer.x - offsetX, pointer.y - offsetY}, {double(x), double(y)}, {}};
    }
    const double x = pointer.x - drag_->pointer.x, y = pointer.y - drag_->pointer.y;
    if (!drag_->hasMoved) {
        if (std::hypot(x, y) < dragThreshold) return;
        drag_->hasMoved = true;
        gtk_gesture_set_state(dragGesture_, GTK_EVENT_SEQUENCE_CLAIMED);
        if (!desk_.capabilities().canDrag) {
            gtk_window_begin_move_drag(GTK_WINDOW(window_), GDK_BUTTON_PRIMARY, static_cast<int>(pointer.x),
                                       static_cast<int>(pointer.y), gdk_event_get_time(event));
            drag_.reset();
            gtk_gesture_set_state(dragGesture_, GTK_EVENT_SEQUENCE_DENIED);
            return;
        }
    }
    drag_->last = {std::round(drag_->window.x + x), std::round(drag_->window.y + y)};
    gtk_window_move(GTK_WINDOW(window_), static_cast<int>(drag_->last.x), static_cast<int>(drag_->last.y));
}

void GtkWidgetWindow::endDragging(bool wasMoved) {
    const auto drag = std::exchange(drag_, std::nullopt);
    if (!drag || !drag->hasMoved) return;
    WidgetPlacement placement = placement_;
    if (wasMoved) {
        // Where it was asked to be; the toolkit hears later where it is.
        const double margin = canvas_.margin();
        placement = desk_.placementAt({drag->last.x + margin, drag->last.y + margin}, size(), placement_);
    }
    const auto move = actions_.move;
    // Back where it belongs, unless the owner accepts the new place.
    desk_.restackSoon();
    if (wasMoved && move) move(placement);
}

void GtkWidgetWindow::closedByDesktop() {
    if (desk_.capabilities().surfaceKind != SurfaceKind::plainWindow) {
        // Its output went away; it comes back on another one.
        surface_->setShown(false);
        desk_.restackSoon();
        return;
    }
    if (const auto remove = actions_.remove) remove();
}

}  // namespace platform
