#include <Foundation/TextDecoding.h>

#include <array>
#include <cstdint>

namespace platform {
namespace {

int hexadecimal(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    return -1;
}

constexpr std::int8_t notBase64 = -1;

constexpr std::array<std::int8_t, 256> base64Values = [] {
    std::array<std::int8_t, 256> values{};
    values.fill(notBase64);
    std::int8_t value = 0;
    for (const auto& [first, last] : {std::pair{'A', 'Z'}, std::pair{'a', 'z'}, std::pair{'0', '9'}}) {
        for (int c = first; c <= last; ++c)
            values[static_cast<std::size_t>(c)] = value++;
    }
    values['+'] = 62;
    values['/'] = 63;
    return values;
}();

}  // namespace

std::string decodedQuotedPrintable(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const int high = text[i] == '=' && i + 2 < text.size() ? hexadecimal(text[i + 1]) : -1;
        const int low = high >= 0 ? hexadecimal(text[i + 2]) : -1;
        if (low < 0) {
            bytes += text[i];
            continue;
        }
        bytes += static_cast<char>(static_cast<unsigned char>(high * 16 + low));
        i += 2;
    }
    return bytes;
}

std::optional<std::string> decodedBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 3);
    std::uint32_t bits = 0;
    int count = 0;
    int padding = 0;
    for (const char c : text) {
        if (c == ' ' || c == '\t' || c == '\r' || c == '\n') continue;
        if (c == '=') {
            ++padding;
            continue;
        }
        const auto value = base64Values[static_cast<unsigned char>(c)];
        if (value == notBase64 || padding > 0) return std::nullopt;
        bits = bits << 6 | static_cast<std::uint32_t>(value);
        if (++count < 4) continue;
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> 16));
        bytes += static_cast<char>(static_cast<unsigned char>(bits >> 8));
        bytes += static_cast<char>(static_cast<unsigned char>(bits));
        bits = 0;
        count = 0;
    }
    // Missing padding is common; a lone character or a surplus of padding means that something was lost.
    if (count == 1 || padding > 2) return std::nullopt;
    if (count >= 2)
        bytes += static_cast<char>(static_cast<unsigned char>(count == 2 ? bits >> 4 : bits >> 10));
    if (count == 3) bytes += static_cast<char>(static_cast<unsigned char>(bits >> 2));
    return bytes;
}

}  // namespace platform
