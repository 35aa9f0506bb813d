#include "MonitorNames.h"

#include "GObjects.h"

namespace platform {

std::string monitorName(GdkDisplay* display, int index) {
    // The toolkit offers it only through a deprecated call.
    G_GNUC_BEGIN_IGNORE_DEPRECATIONS
    const OwnedText name(gdk_screen_get_monitor_plug_name(gdk_display_get_default_screen(display), index));
    G_GNUC_END_IGNORE_DEPRECATIONS
    if (name) return name.get();
    const char* model = gdk_monitor_get_model(gdk_display_get_monitor(display, index));
    return model ? model : "screen-" + std::to_string(index + 1);
}

GdkMonitor* monitorNamed(GdkDisplay* display, std::string_view name) {
    for (int index = 0; index < gdk_display_get_n_monitors(display); ++index) {
        if (monitorName(display, index) == name) return gdk_display_get_monitor(display, index);
    }
    return nullptr;
}

}  // namespace platform
