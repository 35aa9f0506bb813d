#include "NotificationRecorder.h"

#include <gio/gio.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

namespace test {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
constexpr const char* description =
    "<node><interface name='org.freedesktop.Notifications'>"
    "<method name='GetCapabilities'><arg type='as' direction='out'/></method>"
    "<method name='Notify'><arg type='s' direction='in'/><arg type='u' direction='in'/>"
    "<arg type='s' direction='in'/><arg type='s' direction='in'/><arg type='s' direction='in'/>"
    "<arg type='as' direction='in'/><arg type='a{sv}' direction='in'/><arg type='i' direction='in'/>"
    "<arg type='u' direction='out'/></method>"
    "<method name='CloseNotification'><arg type='u' direction='in'/></method>"
    "<signal name='ActionInvoked'><arg type='u'/><arg type='s'/></signal>"
    "</interface></node>";

}  // namespace

struct NotificationRecorder::State {
    GDBusConnection* bus = nullptr;
    GDBusNodeInfo* node = nullptr;
    std::vector<Notification> shown;
    std::string pressedOnArrival;

    void press(unsigned id, const std::string& action) const {
        g_dbus_connection_emit_signal(bus, nullptr, path, service, "ActionInvoked",
                                      g_variant_new("(us)", id, action.c_str()), nullptr);
    }

    static void called(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* method,
                       GVariant* arguments, GDBusMethodInvocation* call, gpointer data) {
        auto& self = *static_cast<State*>(data);
        const std::string name = method;
        if (name == "GetCapabilities") {
            const gchar* capabilities[] = {"actions", "body", nullptr};
            return g_dbus_method_invocation_return_value(call, g_variant_new("(^as)", capabilities));
        }
        if (name == "CloseNotification") {
            guint id = 0;
            g_variant_get(arguments, "(u)", &id);
            for (Notification& one : self.shown)
                one.isClosed = one.isClosed || one.id == id;
            return g_dbus_method_invocation_return_value(call, nullptr);
        }
        guint replaced = 0;
        const gchar* summary = nullptr;
        const gchar* body = nullptr;
        gchar** actions = nullptr;
        GVariant* hints = nullptr;
        g_variant_get(arguments, "(&su&s&s&s^as@a{sv}i)", nullptr, &replaced, nullptr, &summary, &body,
                      &actions, &hints, nullptr);
        guchar urgency = 0;
        g_variant_lookup(hints, "urgency", "y", &urgency);
        g_variant_unref(hints);
        const auto old = std::ranges::find(self.shown, replaced, &Notification::id);
        Notification one;
        one.id = old == self.shown.end() ? static_cast<unsigned>(self.shown.size() + 1) : replaced;
        one.summary = summary;
        one.body = body;
        one.urgency = old == self.shown.end() ? urgency : old->urgency;
        for (std::size_t i = 0; actions[i] && actions[i + 1]; i += 2) {
            one.actions.emplace_back(actions[i]);
            one.labels.emplace_back(actions[i + 1]);
        }
        g_strfreev(actions);
        if (old != self.shown.end()) {
            *old = one;
            return g_dbus_method_invocation_return_value(call, g_variant_new("(u)", one.id));
        }
        self.shown.push_back(one);
        if (!self.pressedOnArrival.empty()) self.press(one.id, self.pressedOnArrival);
        g_dbus_method_invocation_return_value(call, g_variant_new("(u)", one.id));
    }
};

NotificationRecorder::NotificationRecorder(const std::string& busAddress) : state_(new State) {
    const auto flags = static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                                         G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    state_->bus =
        g_dbus_connection_new_for_address_sync(busAddress.c_str(), flags, nullptr, nullptr, nullptr);
    if (!state_->bus) throw std::runtime_error("no bus at " + busAddress);
    state_->node = g_dbus_node_info_new_for_xml(description, nullptr);
    static const GDBusInterfaceVTable table = {State::called, nullptr, nullptr, {}};
    g_dbus_connection_register_object(state_->bus, path, state_->node->interfaces[0], &table, state_.get(),
                                      nullptr, nullptr);
    GVariant* answer = g_dbus_connection_call_sync(
        state_->bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", "RequestName",
        g_variant_new("(su)", service, 0U), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr);
    if (answer) g_variant_unref(answer);
}

NotificationRecorder::~NotificationRecorder() {
    g_dbus_connection_close_sync(state_->bus, nullptr, nullptr);
    g_object_unref(state_->bus);
    g_dbus_node_info_unref(state_->node);
}

const std::vector<NotificationRecorder::Notification>& NotificationRecorder::shown() const {
    return state_->shown;
}

bool NotificationRecorder::waitFor(std::size_t count, double seconds) {
    return waitUntil([&] { return state_->shown.size() >= count; }, seconds);
}

bool NotificationRecorder::waitUntil(const std::function<bool()>& holds, double seconds) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    // Wakes the loop now and then, so that it sees the deadline.
    const guint timer = g_timeout_add(20, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    while (!holds() && std::chrono::steady_clock::now() < deadline)
        g_main_context_iteration(nullptr, TRUE);
    g_source_remove(timer);
    return holds();
}

void NotificationRecorder::pressOnArrival(const std::string& action) {
    state_->pressedOnArrival = action;
}

}  // namespace test
