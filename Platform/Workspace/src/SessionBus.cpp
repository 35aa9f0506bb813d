#include "SessionBus.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace platform {

namespace {

bool hasSessionBus() {
    if (const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS"); address && *address) return true;
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    std::error_code error;
    return runtime && std::filesystem::exists(std::filesystem::path(runtime) / "bus", error);
}

}  // namespace

GObjectRef<GDBusConnection> sessionBus() {
    if (!hasSessionBus()) return nullptr;
    return GObjectRef<GDBusConnection>(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
}

std::string objectPathOf(const std::string& busName) {
    std::string path = "/" + busName;
    std::ranges::replace(path, '.', '/');
    std::ranges::replace(path, '-', '_');
    return path;
}

std::string messageOf(const GError* error) {
    if (!error) return "unknown error";
    const GErrorRef copy(g_error_copy(error));
    g_dbus_error_strip_remote_error(copy.get());
    return copy->message;
}

}  // namespace platform
