#pragma once

namespace platform {

struct WaylandDisplay {
    bool isThere = false;
    bool hasLayerShell = false;
};

/// Asks the Wayland server that the environment names, on a connection of its own, before the toolkit has
/// chosen one.
WaylandDisplay probeWayland();

}  // namespace platform
