#pragma once

#include <gtk/gtk.h>

#include <functional>

namespace platform {

/// Calls `action` on a signal without further arguments ("clicked", "activate"). The action may destroy the
/// widget.
void onSignal(gpointer instance, const char* signal, std::function<void()> action);

}  // namespace platform
