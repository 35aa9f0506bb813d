#include <Views/Legibility.h>

#include <algorithm>
#include <cmath>
#include <optional>

namespace platform {

namespace {

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double encoded(double part) {
    return part <= 0.0031308 ? part * 12.92 : 1.055 * std::pow(part, 1 / 2.4) - 0.055;
}

double luminance(Color color) {
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

/// Lightness 0 to 1, chroma, hue in radians: https://bottosson.github.io/posts/oklab/
struct Oklch {
    double lightness = 0;
    double chroma = 0;
    double hue = 0;
};

Oklch oklch(Color color) {
    const double r = linear(color.red), g = linear(color.green), b = linear(color.blue);
    const double l = std::cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
    const double m = std::cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
    const double s = std::cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
    const double a = 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s;
    const double bb = 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s;
    return {0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s, std::hypot(a, bb), std::atan2(bb, a)};
}

/// May lie outside the gamut.
Color linearRgb(const Oklch& value) {
    const double a = value.chroma * std::cos(value.hue), b = value.chroma * std::sin(value.hue);
    const double l = std::pow(value.lightness + 0.3963377774 * a + 0.2158037573 * b, 3);
    const double m = std::pow(value.lightness - 0.1055613458 * a - 0.0638541728 * b, 3);
    const double s = std::pow(value.lightness - 0.0894841775 * a - 1.2914855480 * b, 3);
    return {4.0767416621 * l - 3.3077115913 * m + 0.2309699292 * s,
            -1.2684380046 * l + 2.6097574011 * m - 0.3413193965 * s,
            -0.0041960863 * l - 0.7034186147 * m + 1.7076147010 * s, 1};
}

bool isInGamut(Color color) {
    constexpr double tolerance = 1e-4;
    const auto inside = [](double part) { return part >= -tolerance && part <= 1 + tolerance; };
    return inside(color.red) && inside(color.green) && inside(color.blue);
}

Color srgb(Oklch value) {
    if (!isInGamut(linearRgb(value))) {
        double possible = 0, impossible = value.chroma;
        for (int step = 0; step < 24; ++step) {
            value.chroma = (possible + impossible) / 2;
            (isInGamut(linearRgb(value)) ? possible : impossible) = value.chroma;
        }
        value.chroma = possible;
    }
    const Color color = linearRgb(value);
    // As it will be painted, so that the ratio holds for the pixels.
    const auto part = [](double linearPart) {
        return std::round(encoded(std::clamp(linearPart, 0.0, 1.0)) * 255) / 255;
    };
    return {part(color.red), part(color.green), part(color.blue), 1};
}

std::optional<Color> movedUntilLegible(Oklch value, Color backdrop, double ratio, double step) {
    while (value.lightness > 0 && value.lightness < 1) {
        value.lightness = std::clamp(value.lightness + step, 0.0, 1.0);
        const Color moved = srgb(value);
        if (contrastRatio(moved, backdrop) >= ratio) return moved;
    }
    return std::nullopt;
}

}  // namespace

Color blended(Color top, Color ground) {
    const auto mix = [&](double a, double b) { return a * top.alpha + b * (1 - top.alpha); };
    return {mix(top.red, ground.red), mix(top.green, ground.green), mix(top.blue, ground.blue), 1};
}

double contrastRatio(Color a, Color b) {
    const double first = luminance(a), second = luminance(b);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

Color legible(Color color, Color backdrop, double ratio) {
    if (contrastRatio(color, backdrop) >= ratio) return color;
    constexpr Color black = Color::hex(0x000000), white = Color::hex(0xFFFFFF);
    const bool darkens = contrastRatio(black, backdrop) >= contrastRatio(white, backdrop);
    Oklch value = oklch(color);
    // The ends of the scale are where the walk stops; a colour that starts there must still be moved.
    value.lightness = std::clamp(value.lightness, 1e-6, 1 - 1e-6);
    const double step = darkens ? -0.01 : 0.01;
    if (const auto moved = movedUntilLegible(value, backdrop, ratio, step)) return *moved;
    return darkens ? black : white;
}

Color legibleTranslucent(Color color, Color backdrop, double ratio) {
    constexpr double step = 0.04;
    for (double alpha = color.alpha; alpha < 1; alpha += step) {
        const Color tried = color.withAlpha(alpha);
        if (contrastRatio(blended(tried, backdrop), backdrop) >= ratio) return tried;
    }
    return color.withAlpha(1);
}

Color legibleSecondary(const Palette& palette, Color backdrop) {
    return legibleTranslucent(palette.secondary, backdrop, 4.5);
}

}  // namespace platform
