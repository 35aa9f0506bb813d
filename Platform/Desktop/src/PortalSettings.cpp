#include "PortalSettings.h"

#include <array>

namespace platform {

namespace {

constexpr const char* busName = "org.freedesktop.portal.Desktop";
constexpr const char* objectPath = "/org/freedesktop/portal/desktop";
constexpr const char* interfaceName = "org.freedesktop.portal.Settings";
constexpr std::array<const char*, 2> groups = {"org.freedesktop.appearance", "org.gnome.desktop.interface"};
/// Milliseconds that the first picture may wait for the portal, its start included.
constexpr int patience = 1000;

std::string joined(std::string_view group, std::string_view key) {
    return std::string(group) + '/' + std::string(key);
}

GVariant* readAllArguments() {
    return g_variant_new("(@as)", g_variant_new_strv(groups.data(), groups.size()));
}

}  // namespace

PortalSettings::PortalSettings(std::function<void()> changed) : changed_(std::move(changed)) {
    bus_.reset(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (!bus_) return;
    subscription_ = g_dbus_connection_signal_subscribe(
        bus_.get(), busName, interfaceName, "SettingChanged", objectPath, nullptr, G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const char*, const char*, const char*, const char*, GVariant* arguments,
           gpointer self) {
            const char *group = nullptr, *key = nullptr;
            GVariant* value = nullptr;
            if (!g_variant_is_of_type(arguments, G_VARIANT_TYPE("(ssv)"))) return;
            g_variant_get(arguments, "(&s&sv)", &group, &key, &value);
            const Variant owned(value);
            static_cast<PortalSettings*>(self)->takeOne(group, key, value);
            static_cast<PortalSettings*>(self)->changed_();
        },
        this, nullptr);
    ask(true);
    // A portal that was too slow, or that starts again, is asked again.
    watch_ = g_bus_watch_name_on_connection(
        bus_.get(), busName, G_BUS_NAME_WATCHER_FLAGS_AUTO_START,
        [](GDBusConnection*, const char*, const char*, gpointer self) {
            static_cast<PortalSettings*>(self)->ask(false);
        },
        nullptr, this, nullptr);
}

PortalSettings::~PortalSettings() {
    g_cancellable_cancel(cancellable_.get());
    if (watch_) g_bus_unwatch_name(watch_);
    if (subscription_) g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
}

void PortalSettings::ask(bool shouldWait) {
    const auto* type = G_VARIANT_TYPE("(a{sa{sv}})");
    if (shouldWait) {
        const Variant answer(g_dbus_connection_call_sync(bus_.get(), busName, objectPath, interfaceName,
                                                         "ReadAll", readAllArguments(), type,
                                                         G_DBUS_CALL_FLAGS_NONE, patience, nullptr, nullptr));
        if (answer) take(answer.get());
        return;
    }
    g_dbus_connection_call(
        bus_.get(), busName, objectPath, interfaceName, "ReadAll", readAllArguments(), type,
        G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(),
        [](GObject* source, GAsyncResult* result, gpointer self) {
            GError* error = nullptr;
            const Variant answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
            if (!answer) {
                // Cancelled: the receiver is gone.
                g_error_free(error);
                return;
            }
            static_cast<PortalSettings*>(self)->take(answer.get());
            static_cast<PortalSettings*>(self)->changed_();
        },
        this);
}

void PortalSettings::take(GVariant* answer) {
    GVariantIter* perGroup = nullptr;
    g_variant_get(answer, "(a{sa{sv}})", &perGroup);
    const char *group = nullptr, *key = nullptr;
    GVariantIter* entries = nullptr;
    GVariant* value = nullptr;
    while (g_variant_iter_loop(perGroup, "{&sa{sv}}", &group, &entries)) {
        while (g_variant_iter_loop(entries, "{&sv}", &key, &value))
            takeOne(group, key, value);
    }
    g_variant_iter_free(perGroup);
}

void PortalSettings::takeOne(const char* group, const char* key, GVariant* value) {
    // Some portals wrap a value twice.
    Variant inner(g_variant_ref(value));
    while (g_variant_is_of_type(inner.get(), G_VARIANT_TYPE_VARIANT))
        inner.reset(g_variant_get_variant(inner.get()));
    values_[joined(group, key)] = std::move(inner);
}

GVariant* PortalSettings::value(std::string_view group, std::string_view key, const char* type) const {
    const auto found = values_.find(joined(group, key));
    if (found == values_.end()) return nullptr;
    return g_variant_is_of_type(found->second.get(), G_VARIANT_TYPE(type)) ? found->second.get() : nullptr;
}

std::optional<unsigned> PortalSettings::number(std::string_view group, std::string_view key) const {
    GVariant* found = value(group, key, "u");
    return found ? std::optional(g_variant_get_uint32(found)) : std::nullopt;
}

std::optional<double> PortalSettings::real(std::string_view group, std::string_view key) const {
    GVariant* found = value(group, key, "d");
    return found ? std::optional(g_variant_get_double(found)) : std::nullopt;
}

std::optional<std::string> PortalSettings::text(std::string_view group, std::string_view key) const {
    GVariant* found = value(group, key, "s");
    return found ? std::optional<std::string>(g_variant_get_string(found, nullptr)) : std::nullopt;
}

}  // namespace platform
