#include "LayerShellProbe.h"

#include <wayland-client.h>

#include <string_view>

namespace platform {

WaylandDisplay probeWayland() {
    WaylandDisplay found;
    wl_display* display = wl_display_connect(nullptr);
    if (!display) return found;
    static constexpr wl_registry_listener listener = {
        [](void* data, wl_registry*, std::uint32_t, const char* interface, std::uint32_t) {
            if (std::string_view(interface) == "zwlr_layer_shell_v1")
                static_cast<WaylandDisplay*>(data)->hasLayerShell = true;
        },
        [](void*, wl_registry*, std::uint32_t) {}};
    wl_registry* registry = wl_display_get_registry(display);
    wl_registry_add_listener(registry, &listener, &found);
    found.isThere = wl_display_roundtrip(display) >= 0;
    wl_registry_destroy(registry);
    wl_display_disconnect(display);
    return found;
}

}  // namespace platform
