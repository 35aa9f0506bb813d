#pragma once

#include <gtk/gtk.h>

#include <string>
#include <string_view>

namespace platform {

/// The name of the connector, by the monitor's index.
std::string monitorName(GdkDisplay* display, int index);
/// nullptr where no monitor of that name is there, or no longer.
GdkMonitor* monitorNamed(GdkDisplay* display, std::string_view name);

}  // namespace platform
