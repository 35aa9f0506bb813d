#include <Views/Palette.h>

namespace platform {

namespace {

constexpr Color black = Color::hex(0x000000);
constexpr Color white = Color::hex(0xFFFFFF);
constexpr double secondaryAlpha = 0.72;

constexpr Palette light = {
    .appearance = Appearance::light,
    .contrast = Contrast::normal,
    .container = Color::hex(0xF7F7F9),
    .border = black.withAlpha(0.10),
    .primary = Color::hex(0x1B1B1F),
    .secondary = Color::hex(0x1B1B1F).withAlpha(secondaryAlpha),
    .orange = Color::hex(0xD95F00),
    .green = Color::hex(0x1A7F37),
    .red = Color::hex(0xC62828),
    .gray = Color::hex(0xC7C7CC),
};

constexpr Palette dark = {
    .appearance = Appearance::dark,
    .contrast = Contrast::normal,
    .container = Color::hex(0x1F1F24),
    .border = white.withAlpha(0.14),
    .primary = Color::hex(0xF4F4F6),
    .secondary = Color::hex(0xF4F4F6).withAlpha(secondaryAlpha),
    .orange = Color::hex(0xFF9F0A),
    .green = Color::hex(0x30D158),
    .red = Color::hex(0xFF6961),
    .gray = Color::hex(0x55555B),
};

constexpr Palette highContrast(Palette palette, Color ink) {
    palette.contrast = Contrast::high;
    palette.primary = ink;
    palette.secondary = ink;
    palette.border = ink.withAlpha(0.6);
    return palette;
}

constexpr Palette lightHighContrast = highContrast(light, black);
constexpr Palette darkHighContrast = highContrast(dark, white);

}  // namespace

const Palette& Palette::of(Appearance appearance, Contrast contrast) {
    if (appearance == Appearance::dark) return contrast == Contrast::high ? darkHighContrast : dark;
    return contrast == Contrast::high ? lightHighContrast : light;
}

}  // namespace platform
