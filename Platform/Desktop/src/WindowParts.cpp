#include "WindowParts.h"

#include <TimeAndText/LinkDetector.h>
#include <TimeAndText/ShortenedText.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "ActionSignal.h"
#include "GObjects.h"

namespace platform {

namespace {

/// 0.72, of 65535; the toolkit's own class for secondary texts is too faint to read.
constexpr guint16 secondaryAlpha = 47185;

std::string escaped(const std::string& text) {
    const OwnedText markup(g_markup_escape_text(text.c_str(), static_cast<gssize>(text.size())));
    return markup.get();
}

std::optional<Url> urlOf(const std::string& link) {
    const auto url = Url::parse(link);
    if (url && url->scheme()) return url;
    // As in mail and chat: without a scheme.
    const bool isAddress = link.find('@') != std::string::npos && link.find('/') == std::string::npos;
    return Url::parse((isAddress ? "mailto:" : "https://") + link);
}

std::string withLinks(const std::string& text) {
    std::string markup;
    std::size_t end = 0;
    for (const DetectedLink& link : detectLinks(text)) {
        const std::string words = text.substr(link.start, link.end - link.start);
        const auto url = urlOf(words);
        if (!url) continue;
        markup += escaped(text.substr(end, link.start - end));
        markup += "<a href=\"" + escaped(url->absoluteString()) + "\">" + escaped(words) + "</a>";
        end = link.end;
    }
    return markup + escaped(text.substr(end));
}

GtkWidget* makeWrappingLabel() {
    GtkWidget* label = gtk_label_new(nullptr);
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    gtk_label_set_max_width_chars(GTK_LABEL(label), 52);
    return label;
}

}  // namespace

std::string valid(const std::string& text) {
    const OwnedText made(g_utf8_make_valid(text.c_str(), static_cast<gssize>(text.size())));
    return made.get();
}

namespace {

// What is shaped of one text: the library needs a second for some hundred kilobytes of Arabic.
constexpr std::size_t mostBytesOfLabel = 1000;
constexpr std::size_t mostBytesOfNotes = 20'000;

}  // namespace

GtkWidget* makeLabel(const std::string& text, TextRole role) {
    GtkWidget* label = makeWrappingLabel();
    gtk_label_set_text(GTK_LABEL(label), valid(shortened(text, mostBytesOfLabel)).c_str());
    if (role == TextRole::body) return label;
    PangoAttrList* attributes = pango_attr_list_new();
    if (role == TextRole::secondary) {
        pango_attr_list_insert(attributes, pango_attr_foreground_alpha_new(secondaryAlpha));
    } else {
        pango_attr_list_insert(attributes, pango_attr_weight_new(PANGO_WEIGHT_BOLD));
        if (role == TextRole::title) pango_attr_list_insert(attributes, pango_attr_scale_new(1.4));
    }
    gtk_label_set_attributes(GTK_LABEL(label), attributes);
    pango_attr_list_unref(attributes);
    return label;
}

GtkWidget* makeLinkedLabel(const std::string& text, std::function<void(const Url&)> open) {
    using Open = std::function<void(const Url&)>;
    GtkWidget* label = makeWrappingLabel();
    gtk_label_set_markup(GTK_LABEL(label), withLinks(valid(shortened(text, mostBytesOfNotes))).c_str());
    gtk_label_set_selectable(GTK_LABEL(label), TRUE);
    gtk_label_set_track_visited_links(GTK_LABEL(label), FALSE);
    g_signal_connect_data(
        label, "activate-link", G_CALLBACK(+[](GtkLabel*, const char* target, gpointer data) -> gboolean {
            const Open called = *static_cast<Open*>(data);
            if (const auto url = Url::parse(target); url && called) called(*url);
            return TRUE;
        }),
        new Open(std::move(open)), [](gpointer data, GClosure*) { delete static_cast<Open*>(data); },
        GConnectFlags(0));
    return label;
}

GtkWidget* makeButton(const std::string& label, std::function<void()> pressed) {
    GtkWidget* button = gtk_button_new_with_label(label.c_str());
    onSignal(button, "clicked", std::move(pressed));
    return button;
}

void onClose(GtkWidget* window, std::function<void()> closed) {
    g_signal_connect(window, "key-press-event",
                     G_CALLBACK(+[](GtkWidget* self, GdkEventKey* event, gpointer) -> gboolean {
                         if (event->keyval != GDK_KEY_Escape) return FALSE;
                         gtk_window_close(GTK_WINDOW(self));
                         return TRUE;
                     }),
                     nullptr);
    using Closed = std::function<void()>;
    g_signal_connect_data(
        window, "delete-event", G_CALLBACK(+[](GtkWidget*, GdkEvent*, gpointer data) -> gboolean {
            const Closed called = *static_cast<Closed*>(data);
            if (called) called();
            return TRUE;
        }),
        new Closed(std::move(closed)), [](gpointer data, GClosure*) { delete static_cast<Closed*>(data); },
        GConnectFlags(0));
}

void moveToPointer(GtkWidget* window) {
    GdkEvent* event = gtk_get_current_event();
    if (!event) return;
    const GdkEventType type = gdk_event_get_event_type(event);
    double x = 0, y = 0;
    const bool isPress =
        (type == GDK_BUTTON_PRESS || type == GDK_BUTTON_RELEASE) && gdk_event_get_root_coords(event, &x, &y);
    gdk_event_free(event);
    if (!isPress) return;
    const int pointerX = static_cast<int>(x), pointerY = static_cast<int>(y);
    GdkRectangle area;
    gdk_monitor_get_workarea(
        gdk_display_get_monitor_at_point(gtk_widget_get_display(window), pointerX, pointerY), &area);
    GtkRequisition size;
    gtk_widget_get_preferred_size(window, nullptr, &size);
    // Not under the pointer, where a second press would do something.
    constexpr int distance = 16, titleBar = 40;
    const int height = size.height + titleBar;
    int top = pointerY + distance;
    if (top + height > area.y + area.height) top = pointerY - distance - height;
    top = std::clamp(top, area.y, std::max(area.y, area.y + area.height - height));
    const int left =
        std::clamp(pointerX - size.width / 2, area.x, std::max(area.x, area.x + area.width - size.width));
    gtk_window_set_position(GTK_WINDOW(window), GTK_WIN_POS_NONE);
    // Window managers place dialogs themselves unless the user chose the place.
    GdkGeometry geometry{};
    gtk_window_set_geometry_hints(GTK_WINDOW(window), nullptr, &geometry, GDK_HINT_USER_POS);
    gtk_window_move(GTK_WINDOW(window), left, top);
}

void presentWindow(GtkWidget* window, DesktopSession& session) {
    session.aboutToPresentWindow();
    if (const std::string token = session.takeActivationToken(); !token.empty())
        gtk_window_set_startup_id(GTK_WINDOW(window), token.c_str());
    gtk_window_present_with_time(GTK_WINDOW(window), gtk_get_current_event_time());
}

}  // namespace platform
