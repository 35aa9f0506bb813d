#include "Authority.h"

#include "CharacterTraits.h"
#include "LinkCharacters.h"

#include <algorithm>

namespace platform {

namespace {

/// 255 bytes on the wire (RFC 1035, section 2.3.4) are so many characters.
constexpr std::size_t longestHost = 253;
/// An IPv6 address has at most 45 characters; the rest is for its zone.
constexpr std::size_t longestAddressInBrackets = 64;
constexpr std::size_t mostPortDigits = 5;

/// RFC 3986, section 3.2.2, with the zone of RFC 6874 ("%eth0", also "%25eth0").
std::size_t bracketedAddressEnd(std::string_view text, std::size_t start) {
    const auto close = text.substr(start, longestAddressInBrackets).find(']');
    if (close == std::string_view::npos) return start;
    const auto inner = text.substr(start + 1, close - 1);
    const auto address = inner.substr(0, inner.find('%'));
    const auto zone = inner.substr(address.size());
    const bool isAddress = address.find(':') != std::string_view::npos &&
                           address.find_first_not_of("0123456789abcdefABCDEF:.") == std::string_view::npos &&
                           std::ranges::all_of(zone, [](char c) { return c == '%' || hasTrait(c, inWord); });
    return isAddress ? start + close + 1 : start;
}

/// Also with letters of other scripts, as people read them, and underscores, as some servers have them.
std::size_t hostNameEnd(std::string_view text, std::size_t start) {
    auto end = start;
    while (end < text.size() && end - start <= longestHost) {
        const char c = text[end];
        if (isAscii(c)) {
            const bool isInside = end > start && (c == '.' || c == '-' || c == '_');
            if (!isAsciiAlphanumeric(c) && !isInside) break;
            ++end;
            continue;
        }
        const auto character = linkCharacterAt(text, end);
        if (character.kind == LinkCharacter::Kind::separator) break;
        // Text in another script glued to the host's end.
        if (character.kind == LinkCharacter::Kind::otherScript && end > start &&
            isAsciiAlphanumeric(text[end - 1]))
            break;
        end += character.size;
    }
    if (end - start > longestHost) return start;
    while (end > start && (text[end - 1] == '.' || text[end - 1] == '-' || text[end - 1] == '_'))
        --end;
    return end;
}

}  // namespace

std::size_t userInfoEnd(std::string_view text, std::size_t start) {
    auto end = start;
    while (end < text.size() && hasTrait(text[end], inUserInfo))
        ++end;
    return end > start && isAt(text, end, "@") ? end + 1 : start;
}

std::size_t hostEnd(std::string_view text, std::size_t start) {
    return isAt(text, start, "[") ? bracketedAddressEnd(text, start) : hostNameEnd(text, start);
}

std::size_t portEnd(std::string_view text, std::size_t start) {
    if (!isAt(text, start, ":")) return start;
    const auto first = start + 1;
    auto end = first;
    while (end < text.size() && isAsciiDigit(text[end]) && end - first <= mostPortDigits)
        ++end;
    const auto digits = end - first;
    const bool isFollowed = end < text.size() && isAsciiAlphanumeric(text[end]);
    return digits >= 1 && digits <= mostPortDigits && !isFollowed ? end : start;
}

bool beginsPath(std::string_view text, std::size_t position) {
    return position < text.size() &&
           (text[position] == '/' || text[position] == '?' || text[position] == '#');
}

}  // namespace platform
