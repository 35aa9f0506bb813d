#include "Utf8.h"

#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace platform {

bool isUtf8(std::string_view text) {
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    for (std::size_t i = 0; i < text.size();) {
        UChar32 character = 0;
        U8_NEXT(bytes, i, text.size(), character);
        if (character < 0) return false;
    }
    return true;
}

bool isAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

}  // namespace platform
