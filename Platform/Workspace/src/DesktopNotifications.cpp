#include <TimeAndText/ShortenedText.h>
#include <Workspace/DesktopNotifications.h>

#include "GObjectRef.h"
#include "SessionBus.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <utility>
#include <vector>

namespace platform {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";

/// More than a desktop shows; some lay out whatever they are given.
constexpr std::size_t mostBytesOfSummary = 400;
constexpr std::size_t mostBytes = 2000;

class BusNotifications final : public DesktopNotifications {
  public:
    BusNotifications(std::string programName, std::string desktopEntry, Failed failed)
        : programName_(std::move(programName)),
          desktopEntry_(std::move(desktopEntry)),
          failed_(std::move(failed)),
          bus_(sessionBus()),
          cancellable_(g_cancellable_new()) {
        if (!bus_) return;
        subscription_ =
            g_dbus_connection_signal_subscribe(bus_.get(), service, service, nullptr, path, nullptr,
                                               G_DBUS_SIGNAL_FLAGS_NONE, signalled, this, nullptr);
        nameWatch_ = g_bus_watch_name_on_connection(bus_.get(), service, G_BUS_NAME_WATCHER_FLAGS_NONE,
                                                    nullptr, vanished, this, nullptr);
    }
    ~BusNotifications() override {
        g_cancellable_cancel(cancellable_.get());
        if (!bus_) return;
        closeShown();
        g_bus_unwatch_name(nameWatch_);
        g_dbus_connection_signal_unsubscribe(bus_.get(), subscription_);
    }
    BusNotifications(const BusNotifications&) = delete;
    BusNotifications& operator=(const BusNotifications&) = delete;

    void show(const std::string& tag, Notification notification, Chosen chosen) override {
        if (!bus_) return failed_(tag, "there is no session bus");
        Shown& shown = shown_[tag];
        shown.chosen = std::move(chosen);
        shown.isWithdrawn = false;
        shown.waiting = std::move(notification);
        if (!hasCapabilities_) return askForCapabilities();
        send(tag, shown);
    }

    void update(const std::string& tag, Notification notification) override {
        const auto found = shown_.find(tag);
        if (found == shown_.end() || found->second.isWithdrawn) return;
        Shown& shown = found->second;
        // What was not sent yet is as new to the user as it was.
        notification.isQuiet = !shown.waiting;
        shown.waiting = std::move(notification);
        if (hasCapabilities_) send(tag, shown);
    }

    void withdraw(const std::string& tag) override {
        const auto found = shown_.find(tag);
        if (found == shown_.end()) return;
        Shown& shown = found->second;
        // On its way to the desktop: closed when its number is known.
        if (shown.id == 0 || shown.isOnItsWay) {
            shown.isWithdrawn = true;
            shown.waiting.reset();
            return;
        }
        close(shown.id);
        shown_.erase(found);
    }

    void withdrawAll() override {
        if (!bus_) return;
        closeShown();
        for (auto one = shown_.begin(); one != shown_.end();) {
            Shown& shown = one->second;
            shown.isWithdrawn = shown.isOnItsWay;
            shown.waiting.reset();
            one = shown.isOnItsWay ? std::next(one) : shown_.erase(one);
        }
    }

  private:
    struct Shown {
        /// The desktop's number; 0 until it is known.
        std::uint32_t id = 0;
        Chosen chosen;
        std::optional<Notification> waiting;
        bool isOnItsWay = false;
        bool isWithdrawn = false;
    };
    /// A signal about a number that is not known, while a message is on its way.
    struct Early {
        std::uint32_t id;
        std::string signal;
        GVariantRef parameters;
    };
    struct Request {
        BusNotifications* self;
        std::string tag;
    };

    void askForCapabilities() {
        if (std::exchange(isAsking_, true)) return;
        g_dbus_connection_call(bus_.get(), service, path, service, "GetCapabilities", nullptr,
                               G_VARIANT_TYPE("(as)"), G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(),
                               gotCapabilities, this);
    }

    static void gotCapabilities(GObject* source, GAsyncResult* result, gpointer data) {
        GError* raw = nullptr;
        const GVariantRef answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &raw));
        const GErrorRef error(raw);
        if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
        auto* self = static_cast<BusNotifications*>(data);
        self->isAsking_ = false;
        if (answer) {
            const GVariantRef list(g_variant_get_child_value(answer.get(), 0));
            for (gsize i = 0; i < g_variant_n_children(list.get()); ++i) {
                const GVariantRef one(g_variant_get_child_value(list.get(), i));
                if (g_variant_get_string(one.get(), nullptr) == std::string("body-markup"))
                    self->readsMarkup_ = true;
            }
            self->hasCapabilities_ = true;
        }
        // Without an answer each message is tried by itself and reports why it failed.
        for (auto& [tag, shown] : self->shown_) {
            if (shown.waiting) self->send(tag, shown);
        }
    }

    GVariant* arguments(const Notification& notification, std::uint32_t replaced) const {
        GVariantBuilder actions;
        g_variant_builder_init(&actions, G_VARIANT_TYPE_STRING_ARRAY);
        if (notification.opensOnTap) {
            g_variant_builder_add(&actions, "s", defaultAction);
            g_variant_builder_add(&actions, "s", "");
        }
        for (const Action& action : notification.actions) {
            g_variant_builder_add(&actions, "s", action.key.c_str());
            g_variant_builder_add(&actions, "s", action.label.c_str());
        }
        GVariantBuilder hints;
        g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
        constexpr guchar low = 0;
        constexpr guchar normal = 1;
        constexpr guchar critical = 2;
        const guchar urgency = notification.isUrgent ? critical : notification.isQuiet ? low : normal;
        g_variant_builder_add(&hints, "{sv}", "urgency", g_variant_new_byte(urgency));
        if (notification.isQuiet)
            g_variant_builder_add(&hints, "{sv}", "suppress-sound", g_variant_new_boolean(TRUE));
        g_variant_builder_add(&hints, "{sv}", "desktop-entry", g_variant_new_string(desktopEntry_.c_str()));
        std::string body = shortened(notification.body, mostBytes);
        if (readsMarkup_) {
            gchar* escaped = g_markup_escape_text(body.data(), static_cast<gssize>(body.size()));
            body = escaped;
            g_free(escaped);
        }
        constexpr gint32 untilAnswered = 0;
        constexpr gint32 asTheDesktopLikes = -1;
        return g_variant_new("(susssasa{sv}i)", programName_.c_str(), replaced, desktopEntry_.c_str(),
                             shortened(notification.summary, mostBytesOfSummary).c_str(), body.c_str(),
                             &actions, &hints, notification.isUrgent ? untilAnswered : asTheDesktopLikes);
    }

    void send(const std::string& tag, Shown& shown) {
        // One at a time, so that the second replaces the first.
        if (shown.isOnItsWay) return;
        shown.isOnItsWay = true;
        const Notification notification = *std::exchange(shown.waiting, std::nullopt);
        g_dbus_connection_call(bus_.get(), service, path, service, "Notify",
                               arguments(notification, shown.id), G_VARIANT_TYPE("(u)"),
                               G_DBUS_CALL_FLAGS_NONE, -1, cancellable_.get(), sent, new Request{this, tag});
    }

    static void sent(GObject* source, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Request> request(static_cast<Request*>(data));
        GError* raw = nullptr;
        const GVariantRef answer(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &raw));
        const GErrorRef error(raw);
        if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
        request->self->answered(std::string(request->tag), answer.get(), error.get());
    }

    void answered(const std::string& tag, GVariant* answer, const GError* error) {
        const auto found = shown_.find(tag);
        if (found == shown_.end()) return;
        Shown& shown = found->second;
        shown.isOnItsWay = false;
        if (answer) g_variant_get(answer, "(u)", &shown.id);
        if (answer && !shown.isWithdrawn && takeEarly(shown.id)) return;
        if (shown.waiting) return send(tag, shown);
        if (answer && !shown.isWithdrawn) return;
        if (answer) close(shown.id);
        const bool isMissed = !answer && !shown.isWithdrawn;
        shown_.erase(found);
        if (isMissed) failed_(tag, "the desktop shows no notifications: " + messageOf(error));
    }

    void close(std::uint32_t id) {
        g_dbus_connection_call(bus_.get(), service, path, service, "CloseNotification",
                               g_variant_new("(u)", id), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
                               nullptr, nullptr, nullptr);
    }

    void closeShown() {
        for (const auto& [tag, shown] : shown_) {
            if (shown.id != 0) close(shown.id);
        }
        // The program may end before its loop runs again.
        g_dbus_connection_flush_sync(bus_.get(), nullptr, nullptr);
    }

    std::map<std::string, Shown>::iterator find(std::uint32_t id) {
        return std::ranges::find_if(shown_, [id](const auto& one) { return one.second.id == id; });
    }

    static void signalled(GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar* name,
                          GVariant* parameters, gpointer data) {
        static_cast<BusNotifications*>(data)->take(name, parameters);
    }

    /// The service is gone, and with it what it showed; the next one counts from the start.
    static void vanished(GDBusConnection*, const gchar*, gpointer data) {
        auto* self = static_cast<BusNotifications*>(data);
        self->hasCapabilities_ = false;
        self->tokens_.clear();
        self->early_.clear();
        for (auto one = self->shown_.begin(); one != self->shown_.end();) {
            const bool wasShown = std::exchange(one->second.id, 0) != 0;
            const bool isToCome = one->second.isOnItsWay || one->second.waiting;
            one = wasShown && !isToCome ? self->shown_.erase(one) : std::next(one);
        }
    }

    /// What the user did with a message before its number was known; whether that was the end of it.
    bool takeEarly(std::uint32_t id) {
        std::vector<Early> mine;
        std::erase_if(early_, [&](Early& one) {
            if (one.id != id) return false;
            mine.push_back(std::move(one));
            return true;
        });
        if (std::ranges::none_of(shown_, [](const auto& one) { return one.second.isOnItsWay; }))
            early_.clear();
        for (const Early& one : mine)
            take(one.signal, one.parameters.get());
        return !mine.empty() && find(id) == shown_.end();
    }

    void take(const std::string& signal, GVariant* parameters) {
        std::uint32_t id = 0;
        const gchar* text = nullptr;
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(us)"))) {
            g_variant_get(parameters, "(u&s)", &id, &text);
        } else if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(uu)"))) {
            g_variant_get(parameters, "(uu)", &id, nullptr);
        }
        if (id == 0) return;
        const auto found = find(id);
        if (found == shown_.end()) {
            const bool isExpected =
                std::ranges::any_of(shown_, [](const auto& one) { return one.second.isOnItsWay; });
            if (isExpected) early_.push_back({id, signal, GVariantRef(g_variant_ref(parameters))});
            return;
        }
        if (signal == "ActivationToken" && text) {
            tokens_[id] = text;
        } else if (signal == "ActionInvoked" && text) {
            std::optional<std::string> token;
            if (const auto given = tokens_.extract(id)) token = given.mapped();
            const Chosen chosen = found->second.chosen;
            const std::string key = text;
            if (chosen) chosen(key, token);
        } else if (signal == "NotificationClosed") {
            tokens_.erase(id);
            // Its replacement may be on its way.
            if (found->second.isOnItsWay || found->second.waiting) {
                found->second.id = 0;
            } else {
                shown_.erase(found);
            }
        }
    }

    const std::string programName_;
    const std::string desktopEntry_;
    const Failed failed_;
    const GObjectRef<GDBusConnection> bus_;
    const GObjectRef<GCancellable> cancellable_;
    guint subscription_ = 0;
    guint nameWatch_ = 0;
    bool isAsking_ = false;
    bool hasCapabilities_ = false;
    bool readsMarkup_ = false;
    std::map<std::string, Shown> shown_;
    std::map<std::uint32_t, std::string> tokens_;
    std::vector<Early> early_;
};

}  // namespace

std::unique_ptr<DesktopNotifications> DesktopNotifications::onSessionBus(std::string programName,
                                                                         std::string desktopEntry,
                                                                         Failed failed) {
    return std::make_unique<BusNotifications>(std::move(programName), std::move(desktopEntry),
                                              std::move(failed));
}

}  // namespace platform
