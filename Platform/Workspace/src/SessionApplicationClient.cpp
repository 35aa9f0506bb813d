#include <Workspace/SessionApplicationClient.h>

#include "GObjectRef.h"
#include "SessionBus.h"

#include <System/MainQueue.h>

#include <cstdlib>

namespace platform {

namespace {

constexpr int milliseconds = 10'000;

GVariantRef callBus(const char* method, GVariant* arguments, const char* answer) {
    const auto bus = sessionBus();
    if (!bus) {
        if (arguments) g_variant_unref(g_variant_ref_sink(arguments));
        return nullptr;
    }
    return GVariantRef(g_dbus_connection_call_sync(
        bus.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method, arguments,
        G_VARIANT_TYPE(answer), G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, nullptr));
}

bool canBeStarted(const std::string& name) {
    const GVariantRef answer = callBus("ListActivatableNames", nullptr, "(as)");
    if (!answer) return false;
    const GVariantRef names(g_variant_get_child_value(answer.get(), 0));
    for (gsize i = 0; i < g_variant_n_children(names.get()); ++i) {
        const GVariantRef one(g_variant_get_child_value(names.get(), i));
        if (name == g_variant_get_string(one.get(), nullptr)) return true;
    }
    return false;
}

/// Lets the program's windows come to the front where the caller was allowed to start programs.
GVariant* platformData() {
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_VARDICT);
    const auto add = [&](const char* key, const char* variable) {
        const char* value = std::getenv(variable);
        if (value && *value) g_variant_builder_add(&builder, "{sv}", key, g_variant_new_string(value));
    };
    add("desktop-startup-id", "DESKTOP_STARTUP_ID");
    add("activation-token", "XDG_ACTIVATION_TOKEN");
    return g_variant_builder_end(&builder);
}

std::optional<std::string> callApplication(const std::string& name, const char* method, GVariant* arguments) {
    const auto bus = sessionBus();
    if (!bus) {
        g_variant_unref(g_variant_ref_sink(arguments));
        return "there is no session bus";
    }
    GError* raw = nullptr;
    const GVariantRef answer(g_dbus_connection_call_sync(
        bus.get(), name.c_str(), objectPathOf(name).c_str(), "org.freedesktop.Application", method, arguments,
        nullptr, G_DBUS_CALL_FLAGS_NONE, milliseconds, nullptr, &raw));
    const GErrorRef error(raw);
    if (answer) return std::nullopt;
    return name + ": " + messageOf(error.get());
}

}  // namespace

bool SessionApplicationClient::isRunning() const {
    const GVariantRef answer = callBus("NameHasOwner", g_variant_new("(s)", identifier_.c_str()), "(b)");
    gboolean isOwned = FALSE;
    if (answer) g_variant_get(answer.get(), "(b)", &isOwned);
    return isOwned;
}

bool SessionApplicationClient::isReachable() const {
    return isRunning() || canBeStarted(identifier_);
}

std::optional<std::string> SessionApplicationClient::activate() const {
    return callApplication(identifier_, "Activate", g_variant_new("(@a{sv})", platformData()));
}

std::optional<std::string> SessionApplicationClient::activateAction(
    const std::string& name, const std::vector<std::string>& parameters) const {
    GVariantBuilder arguments;
    g_variant_builder_init(&arguments, G_VARIANT_TYPE("av"));
    if (parameters.size() == 1) {
        g_variant_builder_add(&arguments, "v", g_variant_new_string(parameters.front().c_str()));
    } else if (parameters.size() > 1) {
        std::vector<GVariant*> texts;
        for (const std::string& text : parameters)
            texts.push_back(g_variant_new_string(text.c_str()));
        g_variant_builder_add(&arguments, "v", g_variant_new_tuple(texts.data(), texts.size()));
    }
    return callApplication(identifier_, "ActivateAction",
                           g_variant_new("(sav@a{sv})", name.c_str(), &arguments, platformData()));
}

std::optional<std::string> SessionApplicationClient::open(const std::vector<Url>& urls) const {
    GVariantBuilder texts;
    g_variant_builder_init(&texts, G_VARIANT_TYPE_STRING_ARRAY);
    for (const Url& url : urls)
        g_variant_builder_add(&texts, "s", url.absoluteString().c_str());
    return callApplication(identifier_, "Open", g_variant_new("(as@a{sv})", &texts, platformData()));
}

void SessionApplicationClient::rereadPrograms() {
    callBus("ReloadConfig", nullptr, "()");
}

bool SessionApplicationClient::waitUntilGone(double timeoutSeconds) const {
    const auto bus = sessionBus();
    if (!bus) return true;
    bool isGone = false;
    const guint watch = g_bus_watch_name_on_connection(
        bus.get(), identifier_.c_str(), G_BUS_NAME_WATCHER_FLAGS_NONE, nullptr,
        [](GDBusConnection*, const gchar*, gpointer gone) { *static_cast<bool*>(gone) = true; }, &isGone,
        nullptr);
    MainQueue::shared().runUntil([&isGone] { return isGone; }, timeoutSeconds);
    g_bus_unwatch_name(watch);
    return isGone;
}

}  // namespace platform
