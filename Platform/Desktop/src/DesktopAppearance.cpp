#include <Desktop/DesktopAppearance.h>

#include <TimeAndText/Ascii.h>
#include <Views/Font.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "GObjects.h"
#include "Observers.h"
#include "PortalSettings.h"

namespace platform {

namespace {

constexpr const char* appearanceGroup = "org.freedesktop.appearance";
constexpr const char* interfaceGroup = "org.gnome.desktop.interface";
constexpr unsigned prefersDark = 1, prefersLight = 2;
/// Beyond these a slip in a configuration is likelier than a wish.
constexpr double leastTextScale = 0.5, greatestTextScale = 3;

std::string familyOf(const std::string& description) {
    struct Release {
        void operator()(PangoFontDescription* font) const { pango_font_description_free(font); }
    };
    const std::unique_ptr<PangoFontDescription, Release> font(
        pango_font_description_from_string(description.c_str()));
    const char* family = pango_font_description_get_family(font.get());
    return family ? family : "";
}

template <class T>
T property(GtkSettings* settings, const char* name) {
    T value{};
    g_object_get(settings, name, &value, nullptr);
    return value;
}

std::string textProperty(GtkSettings* settings, const char* name) {
    const OwnedText value(property<char*>(settings, name));
    return value ? value.get() : "";
}

bool isDarkTheme(std::string_view theme) {
    const auto name = asciiLower(theme);
    return name.ends_with("dark") || name.ends_with("inverse");
}

}  // namespace

struct DesktopAppearance::State {
    explicit State(GtkSettings* given)
        : settings(given),
          prefersDarkByItself(property<gboolean>(given, "gtk-application-prefer-dark-theme") != FALSE),
          portal([this] { refresh(); }),
          look(read()) {
        for (const char* signal :
             {"notify::gtk-theme-name", "notify::gtk-font-name", "notify::gtk-xft-dpi"}) {
            signals.emplace_back(settings, signal, G_CALLBACK(+[](GtkSettings*, GParamSpec*, gpointer self) {
                                     static_cast<State*>(self)->refresh();
                                 }),
                                 this);
        }
        apply();
    }

    DesktopLook read() const {
        DesktopLook seen;
        const std::string theme = textProperty(settings, "gtk-theme-name");
        const auto scheme = portal.number(appearanceGroup, "color-scheme");
        const bool isDarkOtherwise = prefersDarkByItself || isDarkTheme(theme);
        const bool isDark = scheme == prefersDark || (scheme != prefersLight && isDarkOtherwise);
        seen.appearance = isDark ? Appearance::dark : Appearance::light;
        const auto contrast = portal.number(appearanceGroup, "contrast");
        const bool hasHighContrastTheme = theme.starts_with("HighContrast");
        seen.contrast = contrast == 1 || hasHighContrastTheme ? Contrast::high : Contrast::normal;
        seen.fontFamily = familyOf(
            portal.text(interfaceGroup, "font-name").value_or(textProperty(settings, "gtk-font-name")));
        constexpr double usualDpi = 96 * 1024;
        const int dpi = property<int>(settings, "gtk-xft-dpi");
        const double scale =
            portal.real(interfaceGroup, "text-scaling-factor").value_or(dpi > 0 ? dpi / usualDpi : 1);
        seen.textScale = std::clamp(scale, leastTextScale, greatestTextScale);
        return seen;
    }

    void refresh() {
        const DesktopLook seen = read();
        if (seen == look) return;
        look = seen;
        apply();
        observers.notify();
    }

    void apply() const {
        const std::string& family = look.fontFamily;
        // The generic names say that the desktop has no wish of its own.
        const bool isGeneric = family == "Sans" || family == "sans-serif" || family == "Sans Serif";
        setInterfaceFontFamily(isGeneric ? std::string() : family);
        g_object_set(settings, "gtk-application-prefer-dark-theme", look.appearance == Appearance::dark,
                     nullptr);
    }

    GtkSettings* settings;
    bool prefersDarkByItself;
    PortalSettings portal;
    std::vector<SignalConnection> signals;
    Observers observers;
    DesktopLook look;
};

DesktopAppearance::DesktopAppearance() : state_(std::make_unique<State>(gtk_settings_get_default())) {}

DesktopAppearance::~DesktopAppearance() = default;

const DesktopLook& DesktopAppearance::current() const {
    return state_->look;
}

std::shared_ptr<void> DesktopAppearance::observe(std::function<void()> changed) {
    return state_->observers.add(std::move(changed));
}

}  // namespace platform
