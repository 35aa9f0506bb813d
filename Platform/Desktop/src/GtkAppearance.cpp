#include "GtkAppearance.h"

#include <TimeAndText/Ascii.h>
#include <Views/Font.h>
#include <pango/pango.h>

#include <algorithm>
#include <memory>

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

GtkAppearance::GtkAppearance(GtkSettings* settings)
    : settings_(settings),
      prefersDarkByItself_(property<gboolean>(settings, "gtk-application-prefer-dark-theme") != FALSE),
      portal_([this] { refresh(); }),
      look_(read()) {
    for (const char* signal : {"notify::gtk-theme-name", "notify::gtk-font-name", "notify::gtk-xft-dpi"}) {
        signals_.emplace_back(settings, signal, G_CALLBACK(+[](GtkSettings*, GParamSpec*, gpointer self) {
                                  static_cast<GtkAppearance*>(self)->refresh();
                              }),
                              this);
    }
    apply();
}

DesktopLook GtkAppearance::read() const {
    DesktopLook look;
    const std::string theme = textProperty(settings_, "gtk-theme-name");
    const auto scheme = portal_.number(appearanceGroup, "color-scheme");
    const bool isDarkOtherwise = prefersDarkByItself_ || isDarkTheme(theme);
    const bool isDark = scheme == prefersDark || (scheme != prefersLight && isDarkOtherwise);
    look.appearance = isDark ? Appearance::dark : Appearance::light;
    const auto contrast = portal_.number(appearanceGroup, "contrast");
    const bool hasHighContrastTheme = theme.starts_with("HighContrast");
    look.contrast = contrast == 1 || hasHighContrastTheme ? Contrast::high : Contrast::normal;
    look.fontFamily = familyOf(
        portal_.text(interfaceGroup, "font-name").value_or(textProperty(settings_, "gtk-font-name")));
    constexpr double usualDpi = 96 * 1024;
    const int dpi = property<int>(settings_, "gtk-xft-dpi");
    const double scale =
        portal_.real(interfaceGroup, "text-scaling-factor").value_or(dpi > 0 ? dpi / usualDpi : 1);
    look.textScale = std::clamp(scale, leastTextScale, greatestTextScale);
    return look;
}

void GtkAppearance::refresh() {
    const DesktopLook look = read();
    if (look == look_) return;
    look_ = look;
    apply();
    observers_.notify();
}

void GtkAppearance::apply() const {
    const std::string& family = look_.fontFamily;
    // The generic names say that the desktop has no wish of its own.
    const bool isGeneric = family == "Sans" || family == "sans-serif" || family == "Sans Serif";
    setInterfaceFontFamily(isGeneric ? std::string() : family);
    g_object_set(settings_, "gtk-application-prefer-dark-theme", look_.appearance == Appearance::dark,
                 nullptr);
}

std::shared_ptr<void> GtkAppearance::observe(std::function<void()> changed) {
    return observers_.add(std::move(changed));
}

}  // namespace platform
