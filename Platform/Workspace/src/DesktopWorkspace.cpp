#include "DesktopWorkspace.h"

#include <gio/gio.h>

#include <cstdlib>

namespace platform {

namespace {

template <class T>
struct ObjectRelease {
    void operator()(T* object) const { g_object_unref(object); }
};
template <class T>
using Object = std::unique_ptr<T, ObjectRelease<T>>;

struct ErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
using Error = std::unique_ptr<GError, ErrorRelease>;

/// A program that the bus starts gets its URL by a message, which must be out before a short-lived process
/// ends.
void sendPendingMessages() {
    if (!std::getenv("DBUS_SESSION_BUS_ADDRESS")) return;
    const Object<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
}

std::optional<std::string> displayName(const Object<GAppInfo>& program) {
    if (!program) return std::nullopt;
    return std::string(g_app_info_get_display_name(program.get()));
}

Object<GAppInfo> defaultProgram(std::string_view contentType) {
    return Object<GAppInfo>(g_app_info_get_default_for_type(std::string(contentType).c_str(), FALSE));
}

}  // namespace

std::optional<std::string> DesktopWorkspace::open(const Url& url) {
    GError* raw = nullptr;
    if (g_app_info_launch_default_for_uri(url.absoluteString().c_str(), nullptr, &raw)) {
        sendPendingMessages();
        return std::nullopt;
    }
    const Error error(raw);
    const auto scheme = url.scheme();
    if (scheme && !programForScheme(*scheme)) return "no program is set up to open " + *scheme + ": links";
    return url.absoluteString() + ": " + (error ? error->message : "could not be opened");
}

std::optional<std::string> DesktopWorkspace::programForScheme(std::string_view scheme) const {
    return displayName(Object<GAppInfo>(g_app_info_get_default_for_uri_scheme(std::string(scheme).c_str())));
}

std::optional<std::string> DesktopWorkspace::programForContentType(std::string_view contentType) const {
    return displayName(defaultProgram(contentType));
}

std::optional<std::string> DesktopWorkspace::startProgramForContentType(std::string_view contentType) {
    const auto program = defaultProgram(contentType);
    if (!program) return "no program is set up for " + std::string(contentType);
    GError* raw = nullptr;
    if (g_app_info_launch(program.get(), nullptr, nullptr, &raw)) {
        sendPendingMessages();
        return std::nullopt;
    }
    const Error error(raw);
    return displayName(program).value_or("") + ": " + (error ? error->message : "could not be started");
}

}  // namespace platform
