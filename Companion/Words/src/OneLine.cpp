#include <Words/OneLine.h>

#include <TimeAndText/Text.h>

#include <cstddef>

namespace hbr {

namespace {

struct CodePoint {
    char32_t value = 0;
    std::size_t bytes = 1;
};

/// The first code point of well-formed UTF-8.
CodePoint firstCodePoint(std::string_view text) {
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    const unsigned char lead = byte(0);
    const std::size_t count = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (count > text.size()) return {0xFFFD, 1};
    char32_t value = count == 1 ? lead : lead & (0xFFU >> (count + 1));
    for (std::size_t i = 1; i < count; ++i)
        value = (value << 6) | (byte(i) & 0x3FU);
    return {value, count};
}

bool isControl(char32_t c) {
    return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0x2028 || c == 0x2029;
}

/// Marks, embeddings, overrides and isolates of the bidirectional algorithm. In a text from outside they
/// could make the rest of the line look different from what it says.
bool isDirectionControl(char32_t c) {
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E) ||
           (c >= 0x2066 && c <= 0x2069);
}

}  // namespace

std::string onOneLine(std::string_view text) {
    const std::string clean = platform::sanitizedUtf8(text);
    std::string line;
    line.reserve(clean.size());
    for (std::string_view rest = clean; !rest.empty();) {
        const CodePoint point = firstCodePoint(rest);
        if (isControl(point.value)) {
            if (!line.empty() && line.back() != ' ') line += ' ';
        } else if (!isDirectionControl(point.value)) {
            line += rest.substr(0, point.bytes);
        }
        rest.remove_prefix(point.bytes);
    }
    return platform::trimmed(line);
}

}  // namespace hbr
