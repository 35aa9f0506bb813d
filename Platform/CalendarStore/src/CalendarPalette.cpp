#include "CalendarPalette.h"

#include "Identifiers.h"

#include <array>

namespace platform {

Color paletteColor(std::string_view calendarIdentifier, std::set<std::string>& used) {
    static constexpr std::array<unsigned, 10> palette = {0x3986E4, 0x369E4E, 0xE16C10, 0x9260DA, 0x0C9999,
                                                         0xDB5392, 0xD49807, 0xE24947, 0x909B2F, 0x6E7B90};
    const auto wanted = static_cast<std::size_t>(fnv1a(calendarIdentifier) % palette.size());
    for (std::size_t i = 0; i < palette.size(); ++i) {
        const auto color = Color::hex(palette[(wanted + i) % palette.size()]);
        if (used.insert(color.hexString()).second) return color;
    }
    return Color::hex(palette[wanted]);
}

}  // namespace platform
