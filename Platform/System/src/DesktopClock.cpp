#include <System/DesktopClock.h>

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>

namespace platform {
namespace {

constexpr const char* schemaName = "org.gnome.desktop.interface";
constexpr const char* keyName = "clock-format";

template <auto release>
struct Release {
    template <typename T>
    void operator()(T* object) const {
        release(object);
    }
};

/// XDG_CURRENT_DESKTOP is a list ("ubuntu:GNOME").
bool hasTheSwitch(std::string_view desktops) {
    constexpr std::array<std::string_view, 5> family{"GNOME", "GNOME-Classic", "Unity", "Budgie", "Pantheon"};
    while (!desktops.empty()) {
        const auto end = std::min(desktops.find(':'), desktops.size());
        if (std::ranges::find(family, desktops.substr(0, end)) != family.end()) return true;
        desktops.remove_prefix(std::min(end + 1, desktops.size()));
    }
    return false;
}

using SettingsRef = std::unique_ptr<GSettings, Release<g_object_unref>>;

/// Nothing where this desktop has no such switch.
SettingsRef clockSettings(std::string_view desktops) {
    if (!hasTheSwitch(desktops)) return nullptr;
    // Asking for settings whose schema is not installed would end the process.
    GSettingsSchemaSource* schemas = g_settings_schema_source_get_default();
    if (!schemas) return nullptr;
    const std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>> schema(
        g_settings_schema_source_lookup(schemas, schemaName, TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), keyName)) return nullptr;
    return SettingsRef(g_settings_new_full(schema.get(), nullptr, nullptr));
}

std::optional<HourCycle> chosen(GSettings* settings) {
    // The default is 24 hours everywhere and says nothing about the user: only a choice is used.
    const std::unique_ptr<GVariant, Release<g_variant_unref>> choice(
        g_settings_get_user_value(settings, keyName));
    if (!choice || !g_variant_is_of_type(choice.get(), G_VARIANT_TYPE_STRING)) return std::nullopt;
    const std::string_view format = g_variant_get_string(choice.get(), nullptr);
    if (format == "12h") return HourCycle::twelve;
    if (format == "24h") return HourCycle::twentyFour;
    return std::nullopt;
}

}  // namespace

std::optional<HourCycle> desktopHourCycle(std::string_view desktops) {
    const SettingsRef settings = clockSettings(desktops);
    return settings ? chosen(settings.get()) : std::nullopt;
}

struct ClockFormatChange::State {
    SettingsRef settings;
    std::optional<HourCycle> known;
    std::function<void()> changed;

    static void compare(GSettings* settings, const gchar*, gpointer data) {
        auto* self = static_cast<State*>(data);
        const auto now = chosen(settings);
        if (now == std::exchange(self->known, now)) return;
        // The callback may destroy this.
        const auto work = self->changed;
        work();
    }
};

ClockFormatChange::ClockFormatChange(std::function<void()> changed) : state_(std::make_unique<State>()) {
    const char* desktops = std::getenv("XDG_CURRENT_DESKTOP");
    state_->settings = clockSettings(desktops ? desktops : "");
    if (!state_->settings) return;
    state_->changed = std::move(changed);
    const std::string signal = std::string("changed::") + keyName;
    g_signal_connect(state_->settings.get(), signal.c_str(), G_CALLBACK(State::compare), state_.get());
    // GSettings signals only keys that were read before.
    state_->known = chosen(state_->settings.get());
}

ClockFormatChange::~ClockFormatChange() = default;

}  // namespace platform
