#include <Workspace/SessionApplication.h>

#include "GObjectRef.h"
#include "SessionBus.h"

#include <utility>

namespace platform {

namespace {

/// Under which an application knows its state.
constexpr const char* stateKey = "state";

}  // namespace

struct SessionApplication::State {
    Options options;
    GObjectRef<GApplication> application;

    ~State() {
        if (!application) return;
        g_signal_handlers_disconnect_by_data(application.get(), this);
        g_object_set_data(G_OBJECT(application.get()), stateKey, nullptr);
        if (GDBusConnection* bus = g_application_get_dbus_connection(application.get()))
            g_dbus_connection_flush_sync(bus, nullptr, nullptr);
    }

    void addActions();
};

namespace {

struct ActionCall {
    std::function<void(const std::vector<std::string>&)> run;
};

std::vector<std::string> textsOf(GVariant* parameter) {
    std::vector<std::string> texts;
    if (!parameter) return texts;
    if (g_variant_is_of_type(parameter, G_VARIANT_TYPE_STRING)) {
        texts.emplace_back(g_variant_get_string(parameter, nullptr));
        return texts;
    }
    for (gsize i = 0; i < g_variant_n_children(parameter); ++i) {
        const GVariantRef child(g_variant_get_child_value(parameter, i));
        texts.emplace_back(g_variant_get_string(child.get(), nullptr));
    }
    return texts;
}

/// Nothing, "s", "(ss)", …
std::string typeOf(std::size_t parameterCount) {
    if (parameterCount < 2) return std::string(parameterCount, 's');
    return "(" + std::string(parameterCount, 's') + ")";
}

/// Only a subclass learns what comes along with a call.
void beforeEmit(GApplication* application, GVariant* platformData) {
    const auto* state =
        static_cast<SessionApplication::State*>(g_object_get_data(G_OBJECT(application), stateKey));
    if (!state || !state->options.useActivationToken) return;
    const gchar* token = "";
    if (!g_variant_lookup(platformData, "activation-token", "&s", &token))
        g_variant_lookup(platformData, "desktop-startup-id", "&s", &token);
    state->options.useActivationToken(token);
}

GApplication* makeApplication(const std::string& identifier) {
    static const GType type = g_type_register_static_simple(
        G_TYPE_APPLICATION, "HostedSessionApplication", sizeof(GApplicationClass),
        [](gpointer made, gpointer) { G_APPLICATION_CLASS(made)->before_emit = beforeEmit; },
        sizeof(GApplication), nullptr, GTypeFlags{});
    return G_APPLICATION(g_object_new(type, "application-id", identifier.c_str(), "flags",
                                      G_APPLICATION_HANDLES_OPEN, nullptr));
}

void activated(GApplication*, gpointer data) {
    const auto& options = static_cast<SessionApplication::State*>(data)->options;
    if (options.activate) options.activate();
}

void opened(GApplication*, GFile** files, gint count, const gchar*, gpointer data) {
    const auto& options = static_cast<SessionApplication::State*>(data)->options;
    std::vector<Url> urls;
    for (gint i = 0; i < count; ++i) {
        gchar* text = g_file_get_uri(files[i]);
        if (auto url = Url::parse(text)) urls.push_back(*std::move(url));
        g_free(text);
    }
    if (options.open && !urls.empty()) options.open(urls);
}

}  // namespace

void SessionApplication::State::addActions() {
    for (const Action& action : options.actions) {
        const std::string type = typeOf(action.parameterCount);
        const GObjectRef<GSimpleAction> simple(
            g_simple_action_new(action.name.c_str(), type.empty() ? nullptr : G_VARIANT_TYPE(type.c_str())));
        g_signal_connect_data(
            simple.get(), "activate", G_CALLBACK(+[](GSimpleAction*, GVariant* parameter, gpointer data) {
                // A copy: the call may end the application.
                const auto run = static_cast<ActionCall*>(data)->run;
                run(textsOf(parameter));
            }),
            new ActionCall{action.run},
            [](gpointer data, GClosure*) { delete static_cast<ActionCall*>(data); }, GConnectFlags{});
        g_action_map_add_action(G_ACTION_MAP(application.get()), G_ACTION(simple.get()));
    }
}

SessionApplication::SessionApplication(std::unique_ptr<State> state) : state_(std::move(state)) {}
SessionApplication::~SessionApplication() = default;

SessionApplication::Claimed SessionApplication::claim(Options options) {
    if (!sessionBus()) return {};
    auto state = std::make_unique<State>();
    state->options = std::move(options);
    state->application.reset(makeApplication(state->options.identifier));
    g_object_set_data(G_OBJECT(state->application.get()), stateKey, state.get());
    state->addActions();
    g_signal_connect(state->application.get(), "activate", G_CALLBACK(activated), state.get());
    g_signal_connect(state->application.get(), "open", G_CALLBACK(opened), state.get());
    if (!g_application_register(state->application.get(), nullptr, nullptr)) return {};
    if (g_application_get_is_remote(state->application.get())) return {Claim::taken, nullptr};
    return {Claim::first, std::unique_ptr<SessionApplication>(new SessionApplication(std::move(state)))};
}

}  // namespace platform
