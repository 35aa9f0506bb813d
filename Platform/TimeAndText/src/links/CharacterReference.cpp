#include "CharacterReference.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/LinkDetector.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

namespace platform {

namespace {

constexpr std::string_view escapedAmpersand = "amp;";
constexpr std::size_t mostDigits = 7;
/// Without punctuation, which may also belong to the sentence around the link.
constexpr std::string_view charactersOfUrls =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789-_~%+=/&";

std::optional<CharacterReference> numericReference(std::string_view text) {
    const bool isHexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
    const std::size_t start = isHexadecimal ? 3 : 2;
    if (text.size() <= start) return std::nullopt;
    const auto digits = text.substr(start, mostDigits);
    unsigned value = 0;
    const auto [end, error] =
        std::from_chars(digits.data(), digits.data() + digits.size(), value, isHexadecimal ? 16 : 10);
    const auto count = static_cast<std::size_t>(end - digits.data());
    if (error != std::errc() || start + count >= text.size() || text[start + count] != ';') return {};
    if (value >= 0x80 || charactersOfUrls.find(static_cast<char>(value)) == std::string_view::npos) return {};
    return CharacterReference{static_cast<char>(value), start + count + 1};
}

/// "&#39;" and "&#x27;".
bool isNumericReference(std::string_view text) {
    if (!text.starts_with("&#")) return false;
    text.remove_prefix(2);
    const bool isHexadecimal = !text.empty() && asciiLower(text.front()) == 'x';
    if (isHexadecimal) text.remove_prefix(1);
    const auto end = std::min(text.find(';'), text.size());
    return end > 0 && end < text.size() && end <= mostDigits &&
           std::ranges::all_of(
               text.substr(0, end),
               [isHexadecimal](char c) { return isAsciiDigit(c) || (isHexadecimal && isAsciiLetter(c)); });
}

}  // namespace

std::optional<CharacterReference> urlCharacterReference(std::string_view text) {
    if (!text.starts_with('&')) return std::nullopt;
    if (text.substr(1).starts_with('#')) return numericReference(text);
    std::size_t size = 1;
    while (text.substr(size).starts_with(escapedAmpersand))
        size += escapedAmpersand.size();
    if (size == 1) return std::nullopt;
    return CharacterReference{'&', size};
}

bool isMarkupReference(std::string_view text) {
    if (urlCharacterReference(text)) return false;
    constexpr auto named = std::to_array<std::string_view>(
        {"&quot;", "&lt;", "&gt;", "&nbsp;", "&apos;", "&lsquo;", "&rsquo;", "&ldquo;", "&rdquo;"});
    return isNumericReference(text) ||
           std::ranges::any_of(named, [&](std::string_view one) { return text.starts_with(one); });
}

std::string withoutCharacterReferences(std::string_view link) {
    std::string result;
    result.reserve(link.size());
    while (!link.empty()) {
        const auto reference = urlCharacterReference(link);
        result += reference ? reference->character : link.front();
        link.remove_prefix(reference ? reference->size : 1);
    }
    return result;
}

bool isMarkup(std::string_view text) {
    const auto lastEnd = text.rfind('>');
    if (lastEnd == std::string_view::npos) return false;
    for (auto at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
        auto name = at + 1;
        if (name < text.size() && text[name] == '/') ++name;
        auto end = name;
        while (end < text.size() && isAsciiAlphanumeric(text[end]))
            ++end;
        const bool isTag = end > name && isAsciiLetter(text[name]) && end < text.size() &&
                           std::string_view("/> \t\r\n").find(text[end]) != std::string_view::npos;
        if (isTag && end <= lastEnd) return true;
    }
    return false;
}

}  // namespace platform
