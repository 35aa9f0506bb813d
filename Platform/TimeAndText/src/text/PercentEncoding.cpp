#include "PercentEncoding.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/Text.h>
#include <TimeAndText/Url.h>

#include <array>
#include <cstdint>

namespace platform {
namespace {

constexpr std::uint8_t bit(UrlPart part) {
    return static_cast<std::uint8_t>(1u << static_cast<unsigned>(part));
}

constexpr std::array<std::uint8_t, 256> makeAllowed() {
    std::array<std::uint8_t, 256> allowed{};
    const auto allow = [&allowed](std::string_view characters, std::uint8_t parts) {
        for (const char c : characters)
            allowed[static_cast<unsigned char>(c)] |= parts;
    };
    constexpr std::uint8_t path = bit(UrlPart::path) | bit(UrlPart::query) | bit(UrlPart::fragment);
    constexpr std::uint8_t all = path | bit(UrlPart::userInfo) | bit(UrlPart::host);
    allow(asciiAlphanumerics, all);
    allow("-._~!$&'()*+,;=", all);
    allow(":", path | bit(UrlPart::userInfo));
    allow("@/", path);
    allow("?", bit(UrlPart::query) | bit(UrlPart::fragment));
    return allowed;
}

constexpr std::array<std::uint8_t, 256> allowedParts = makeAllowed();

}  // namespace

bool mayStandIn(UrlPart part, char byte) {
    return (allowedParts[static_cast<unsigned char>(byte)] & bit(part)) != 0;
}

bool isPercentTriplet(std::string_view text, std::size_t at) {
    return text.size() > at + 2 && text[at] == '%' && hexDigitValue(text[at + 1]) >= 0 &&
           hexDigitValue(text[at + 2]) >= 0;
}

void appendPercentEncoded(std::string& target, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    target += '%';
    target += upperHexDigits[value >> 4];
    target += upperHexDigits[value & 15];
}

void appendEncoded(std::string& target, std::string_view text, UrlPart part, bool keepTriplets) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (mayStandIn(part, text[i]) || (keepTriplets && isPercentTriplet(text, i))) {
            target += text[i];
        } else {
            appendPercentEncoded(target, text[i]);
        }
    }
}

std::optional<std::string> removingPercentEncoding(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '%') {
            result += text[i];
            continue;
        }
        if (!isPercentTriplet(text, i)) return std::nullopt;
        result += static_cast<char>(hexDigitValue(text[i + 1]) * 16 + hexDigitValue(text[i + 2]));
        i += 2;
    }
    if (!isWellFormedUtf8(result)) return std::nullopt;
    return result;
}

std::string percentEncodedForQuery(std::string_view text) {
    std::string result;
    result.reserve(text.size());
    appendEncoded(result, text, UrlPart::query, false);
    return result;
}

}  // namespace platform
