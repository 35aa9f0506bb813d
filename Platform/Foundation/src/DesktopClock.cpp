#include "DesktopClock.h"

#include <gio/gio.h>

#include <algorithm>
#include <array>
#include <memory>

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

}  // namespace

std::optional<HourCycle> desktopHourCycle(std::string_view desktops) {
    if (!hasTheSwitch(desktops)) return std::nullopt;
    // Asking for settings whose schema is not installed would end the process.
    GSettingsSchemaSource* schemas = g_settings_schema_source_get_default();
    if (!schemas) return std::nullopt;
    const std::unique_ptr<GSettingsSchema, Release<g_settings_schema_unref>> schema(
        g_settings_schema_source_lookup(schemas, schemaName, TRUE));
    if (!schema || !g_settings_schema_has_key(schema.get(), keyName)) return std::nullopt;

    const std::unique_ptr<GSettings, Release<g_object_unref>> settings(
        g_settings_new_full(schema.get(), nullptr, nullptr));
    // The default is 24 hours everywhere and says nothing about the user: only a choice counts.
    const std::unique_ptr<GVariant, Release<g_variant_unref>> choice(
        g_settings_get_user_value(settings.get(), keyName));
    if (!choice || !g_variant_is_of_type(choice.get(), G_VARIANT_TYPE_STRING)) return std::nullopt;
    const std::string_view format = g_variant_get_string(choice.get(), nullptr);
    if (format == "12h") return HourCycle::twelve;
    if (format == "24h") return HourCycle::twentyFour;
    return std::nullopt;
}

}  // namespace platform
