#include "TapButtons.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "ActionSignal.h"
#include "GObjects.h"

namespace platform {

namespace {

/// Nothing of the button shows; the painter draws hover and focus.
void makeInvisible(GtkWidget* button) {
    static GtkCssProvider* provider = [] {
        GtkCssProvider* made = gtk_css_provider_new();
        gtk_css_provider_load_from_data(made,
                                        "* { background: none; border: none; box-shadow: none; outline: none;"
                                        " padding: 0; margin: 0; min-width: 0; min-height: 0; }",
                                        -1, nullptr);
        return made;
    }();
    gtk_style_context_add_provider(gtk_widget_get_style_context(button), GTK_STYLE_PROVIDER(provider),
                                   GTK_STYLE_PROVIDER_PRIORITY_USER);
}

void showHand(GtkWidget* button) {
    GdkDisplay* display = gtk_widget_get_display(button);
    const Object<GdkCursor> hand(gdk_cursor_new_from_name(display, "pointer"));
    gdk_window_set_cursor(gtk_button_get_event_window(GTK_BUTTON(button)), hand.get());
}

}  // namespace

TapButtons::TapButtons(GtkFixed* parent, Events events) : parent_(parent), events_(std::move(events)) {}

std::size_t TapButtons::indexOf(GtkWidget* button) const {
    return static_cast<std::size_t>(std::ranges::find(buttons_, button) - buttons_.begin());
}

void TapButtons::addButton() {
    GtkWidget* button = gtk_button_new();
    makeInvisible(button);
    onSignal(button, "clicked", [this, button] { tapped(indexOf(button)); });
    g_signal_connect_after(button, "realize", G_CALLBACK(+[](GtkWidget* self, gpointer) { showHand(self); }),
                           nullptr);
    const auto crossed = [](GtkWidget* self, GdkEventCrossing* event, gpointer data) -> gboolean {
        static_cast<TapButtons*>(data)->setHovered(self, event->type == GDK_ENTER_NOTIFY);
        return FALSE;
    };
    g_signal_connect(button, "enter-notify-event", G_CALLBACK(+crossed), this);
    g_signal_connect(button, "leave-notify-event", G_CALLBACK(+crossed), this);
    const auto focusChanged = [](GtkWidget* self, GdkEventFocus*, gpointer data) -> gboolean {
        auto* buttons = static_cast<TapButtons*>(data);
        buttons->events_.changed(buttons->indexOf(self));
        return FALSE;
    };
    g_signal_connect(button, "focus-in-event", G_CALLBACK(+focusChanged), this);
    g_signal_connect(button, "focus-out-event", G_CALLBACK(+focusChanged), this);
    gtk_fixed_put(parent_, button, 0, 0);
    buttons_.push_back(button);
}

void TapButtons::tapped(std::size_t target) const {
    // Copies: the receiver may destroy these buttons.
    const Url url = targets_[target].url;
    const auto notify = events_.tapped;
    notify(url);
}

void TapButtons::setHovered(GtkWidget* button, bool isHovered) {
    const std::size_t index = indexOf(button);
    if (isHovered)
        hovered_ = index;
    else if (hovered_ == index)
        hovered_.reset();
    events_.changed(index);
}

void TapButtons::set(std::vector<TapTarget> targets, int origin, double scale) {
    if (targets == targets_ && origin == origin_ && scale == scale_) return;
    targets_ = std::move(targets);
    origin_ = origin;
    scale_ = scale;
    while (buttons_.size() > targets_.size()) {
        GtkWidget* last = buttons_.back();
        gtk_widget_hide(last);
        buttons_.pop_back();
        if (hovered_ == buttons_.size()) hovered_.reset();
        g_signal_handlers_disconnect_by_data(last, this);
        gtk_widget_destroy(last);
    }
    while (buttons_.size() < targets_.size())
        addButton();
    for (std::size_t i = 0; i < targets_.size(); ++i)
        place(buttons_[i], targets_[i].frame, targets_[i].label, origin, scale);
}

void TapButtons::setDisabled(const std::vector<AccessibleElement>& elements, int origin, double scale) {
    while (disabled_.size() > elements.size()) {
        gtk_widget_destroy(disabled_.back());
        disabled_.pop_back();
    }
    while (disabled_.size() < elements.size()) {
        // A label has no window, so it takes no click from the row below it as a disabled button would.
        GtkWidget* label = gtk_label_new(nullptr);
        gtk_widget_set_sensitive(label, FALSE);
        atk_object_set_role(gtk_widget_get_accessible(label), ATK_ROLE_PUSH_BUTTON);
        gtk_fixed_put(parent_, label, 0, 0);
        disabled_.push_back(label);
    }
    for (std::size_t i = 0; i < elements.size(); ++i)
        place(disabled_[i], elements[i].frame, elements[i].label, origin, scale);
}

void TapButtons::place(GtkWidget* widget, const Rect& frame, const std::string& label, int origin,
                       double scale) {
    const auto whole = [scale](double length) { return static_cast<int>(std::lround(length * scale)); };
    gtk_fixed_move(parent_, widget, origin + whole(frame.x), origin + whole(frame.y));
    gtk_widget_set_size_request(widget, whole(frame.width), whole(frame.height));
    AtkObject* accessible = gtk_widget_get_accessible(widget);
    const char* name = atk_object_get_name(accessible);
    if (!name || label != name) atk_object_set_name(accessible, label.c_str());
    gtk_widget_show(widget);
}

std::optional<std::size_t> TapButtons::focused() const {
    for (std::size_t i = 0; i < buttons_.size(); ++i) {
        if (gtk_widget_is_focus(buttons_[i])) return i;
    }
    return std::nullopt;
}

std::optional<Url> TapButtons::current() const {
    const auto target = hovered_ ? hovered_ : focused();
    return target && *target < targets_.size() ? std::optional(targets_[*target].url) : std::nullopt;
}

void TapButtons::focus(std::size_t target) {
    if (target < buttons_.size()) gtk_widget_grab_focus(buttons_[target]);
}

void TapButtons::activateFocused() const {
    if (const auto target = focused()) tapped(*target);
}

}  // namespace platform
