#include "KeyGuard.h"

namespace platform {

KeyGuard::KeyGuard(GtkWidget* window, double quietSeconds)
    : window_(window),
      quiet_(static_cast<gint64>(quietSeconds * G_USEC_PER_SEC)),
      lastKey_(g_get_monotonic_time()) {
    const auto key = +[](GtkWidget*, GdkEventKey* event, gpointer self) -> gboolean {
        return static_cast<KeyGuard*>(self)->swallows(*event);
    };
    g_signal_connect(window_, "key-press-event", G_CALLBACK(key), this);
    g_signal_connect(window_, "key-release-event", G_CALLBACK(key), this);
    gtk_widget_add_events(window_, GDK_BUTTON_PRESS_MASK);
    g_signal_connect(window_, "event",
                     G_CALLBACK(+[](GtkWidget*, GdkEvent* event, gpointer self) -> gboolean {
                         if (event->type == GDK_BUTTON_PRESS) static_cast<KeyGuard*>(self)->isLifted_ = true;
                         return FALSE;
                     }),
                     this);
}

KeyGuard::~KeyGuard() {
    g_signal_handlers_disconnect_by_data(window_, this);
}

bool KeyGuard::swallows(const GdkEventKey& event) {
    if (event.type == GDK_KEY_RELEASE) return event.hardware_keycode == swallowedKey_;
    const gint64 now = g_get_monotonic_time();
    const gint64 since = now - lastKey_;
    lastKey_ = now;
    isLifted_ = isLifted_ || since >= quiet_;
    swallowedKey_ = isLifted_ ? 0 : event.hardware_keycode;
    return !isLifted_;
}

}  // namespace platform
