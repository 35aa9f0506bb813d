#include "DesktopWorkspace.h"

#include "SessionBus.h"

#include <utility>

namespace platform {

namespace {

/// A program that the bus starts gets its URL by a message, which must be out before a short-lived process
/// ends.
void sendPendingMessages() {
    if (const auto bus = sessionBus()) g_dbus_connection_flush_sync(bus.get(), nullptr, nullptr);
}

std::optional<std::string> displayName(const GObjectRef<GAppInfo>& program) {
    if (!program) return std::nullopt;
    return std::string(g_app_info_get_display_name(program.get()));
}

/// The default program, if it is one for this very type: an editor of any text is not a calendar.
GObjectRef<GAppInfo> defaultProgram(std::string_view contentType) {
    const std::string type(contentType);
    GObjectRef<GAppInfo> program(g_app_info_get_default_for_type(type.c_str(), FALSE));
    GList* fitting = g_app_info_get_recommended_for_type(type.c_str());
    bool isFitting = false;
    for (GList* one = fitting; one && program; one = one->next)
        isFitting = isFitting || g_app_info_equal(G_APP_INFO(one->data), program.get());
    g_list_free_full(fitting, g_object_unref);
    if (!isFitting) program.reset();
    return program;
}

GObjectRef<GAppLaunchContext> launchContext(const std::string& activationToken) {
    GObjectRef<GAppLaunchContext> context(g_app_launch_context_new());
    if (!activationToken.empty()) {
        for (const char* variable : {"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"})
            g_app_launch_context_setenv(context.get(), variable, activationToken.c_str());
    }
    return context;
}

}  // namespace

void DesktopWorkspace::useActivationToken(const std::string& token) {
    const std::lock_guard lock(mutex_);
    activationToken_ = token;
}

GObjectRef<GAppLaunchContext> DesktopWorkspace::takeContext() {
    const std::lock_guard lock(mutex_);
    return launchContext(std::exchange(activationToken_, {}));
}

std::optional<std::string> DesktopWorkspace::open(const Url& url) {
    GError* raw = nullptr;
    if (g_app_info_launch_default_for_uri(url.absoluteString().c_str(), takeContext().get(), &raw)) {
        sendPendingMessages();
        return std::nullopt;
    }
    const GErrorRef error(raw);
    return url.absoluteString() + ": " + error->message;
}

std::optional<std::string> DesktopWorkspace::programForScheme(std::string_view scheme) const {
    return displayName(
        GObjectRef<GAppInfo>(g_app_info_get_default_for_uri_scheme(std::string(scheme).c_str())));
}

std::optional<std::string> DesktopWorkspace::programForContentType(std::string_view contentType) const {
    return displayName(defaultProgram(contentType));
}

std::optional<std::string> DesktopWorkspace::startProgramForContentType(std::string_view contentType) {
    const auto program = defaultProgram(contentType);
    if (!program) return "no program is set up for " + std::string(contentType);
    GError* raw = nullptr;
    if (g_app_info_launch(program.get(), nullptr, takeContext().get(), &raw)) {
        sendPendingMessages();
        return std::nullopt;
    }
    const GErrorRef error(raw);
    return displayName(program).value_or("") + ": " + error->message;
}

}  // namespace platform
