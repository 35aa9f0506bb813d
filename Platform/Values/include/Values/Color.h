#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// sRGB with straight alpha, each part 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    static constexpr Color hex(unsigned rgb) {
        return {((rgb >> 16) & 0xFF) / 255.0, ((rgb >> 8) & 0xFF) / 255.0, (rgb & 0xFF) / 255.0, 1};
    }
    /// "#RRGGBB", "#RGB" or "#RRGGBBAA", letter case ignored.
    static std::optional<Color> parse(std::string_view text);
    constexpr Color withAlpha(double value) const { return {red, green, blue, value}; }
    /// "#RRGGBB" in upper case; alpha is left out.
    std::string hexString() const;

    friend bool operator==(const Color&, const Color&) = default;
};

}  // namespace platform
