#include <Values/Color.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace platform {

std::optional<Color> Color::parse(std::string_view text) {
    if (!text.starts_with('#')) return std::nullopt;
    text.remove_prefix(1);
    std::string digits;
    if (text.size() == 3) {
        for (char c : text)
            digits.append(2, c);
    } else if (text.size() == 6 || text.size() == 8) {
        digits = text;
    } else {
        return std::nullopt;
    }
    unsigned value = 0;
    auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
    if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
    if (digits.size() == 6) return hex(value);
    return hex(value >> 8).withAlpha((value & 0xFF) / 255.0);
}

std::string Color::hexString() const {
    auto part = [](double value) {
        return static_cast<unsigned>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
    };
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", part(red) & 0xFF, part(green) & 0xFF,
                  part(blue) & 0xFF);
    return text;
}

}  // namespace platform
