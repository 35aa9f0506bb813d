#include <Foundation/TextDecoding.h>

#include <Foundation/Text.h>

#include <array>
#include <cstdint>

#include "text/Utf8.h"

namespace platform {
namespace {

void appendUtf8(std::string& out, char32_t c) {
    const auto put = [&](char32_t byte) { out += static_cast<char>(static_cast<unsigned char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

std::string utf16ToUtf8(std::string_view bytes, bool bigEndian) {
    std::string out;
    out.reserve(bytes.size() / 2);
    const auto unit = [&](std::size_t i) {
        const auto a = static_cast<unsigned char>(bytes[i]);
        const auto b = static_cast<unsigned char>(bytes[i + 1]);
        return static_cast<char32_t>(bigEndian ? (a << 8 | b) : (b << 8 | a));
    };
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        char32_t c = unit(i);
        if (c >= 0xD800 && c < 0xDC00 && i + 3 < bytes.size()) {
            const char32_t low = unit(i + 2);
            if (low >= 0xDC00 && low < 0xE000) {
                c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                i += 2;
            }
        }
        appendUtf8(out, c >= 0xD800 && c < 0xE000 ? U'\uFFFD' : c);
    }
    return out;
}

/// Length of the UTF-8 character at `i`, 0 when there is none.
std::size_t characterLength(std::string_view text, std::size_t i) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    const unsigned char lead = byte(i);
    if (lead < 0x80) return 1;
    const std::size_t length = lead >= 0xC2 && lead < 0xE0   ? 2
                               : lead >= 0xE0 && lead < 0xF0 ? 3
                               : lead >= 0xF0 && lead < 0xF5 ? 4
                                                             : 0;
    if (length == 0 || i + length > text.size()) return 0;
    for (std::size_t k = 1; k < length; ++k) {
        if ((byte(i + k) & 0xC0) != 0x80) return 0;
    }
    const unsigned char second = byte(i + 1);
    const bool overlong = (lead == 0xE0 && second < 0xA0) || (lead == 0xF0 && second < 0x90);
    const bool outside = (lead == 0xED && second >= 0xA0) || (lead == 0xF4 && second >= 0x90);
    return overlong || outside ? 0 : length;
}

constexpr std::array<char16_t, 32> windows1252 = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};

}  // namespace

std::string withoutUtf16(std::string bytes) {
    const std::string_view view = bytes;
    if (view.starts_with("\xEF\xBB\xBF")) return bytes.substr(3);
    if (view.starts_with("\xFF\xFE")) return utf16ToUtf8(view.substr(2), false);
    if (view.starts_with("\xFE\xFF")) return utf16ToUtf8(view.substr(2), true);
    if (view.size() >= 4 && view[0] != '\0' && view[1] == '\0' && view[2] != '\0' && view[3] == '\0') {
        return utf16ToUtf8(view, false);
    }
    if (view.size() >= 4 && view[0] == '\0' && view[1] != '\0' && view[2] == '\0' && view[3] != '\0') {
        return utf16ToUtf8(view, true);
    }
    return bytes;
}

bool isWellFormedUtf8(std::string_view text) {
    return isUtf8(text);
}

std::string lineAsUtf8(std::string_view line) {
    bool valid = true;
    bool hasWholeCharacters = false;
    for (std::size_t i = 0; i < line.size();) {
        const auto length = characterLength(line, i);
        valid = valid && length > 0;
        hasWholeCharacters = hasWholeCharacters || length > 1;
        i += length > 0 ? length : 1;
    }
    if (valid) return std::string(line);
    if (hasWholeCharacters) return sanitizedUtf8(line);
    std::string out;
    for (const char c : line) {
        const auto byte = static_cast<unsigned char>(c);
        appendUtf8(out, byte >= 0x80 && byte < 0xA0 ? windows1252[byte - 0x80U] : byte);
    }
    return out;
}

}  // namespace platform
