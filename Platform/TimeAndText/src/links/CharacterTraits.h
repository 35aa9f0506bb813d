#pragma once

#include <TimeAndText/Ascii.h>

#include <array>
#include <cstdint>
#include <string_view>

namespace platform {

/// What an ASCII character may be in or beside a link, as bits. The sets are those of RFC 3986, appendix A,
/// without what people write around a link.
enum CharacterTrait : std::uint8_t {
    /// Of a scheme, a host or the name before an "@".
    inWord = 1,
    /// White space, controls and what RFC 3986 wants escaped.
    endsLink = 2,
    /// Punctuation that belongs to the sentence when a link ends with it.
    trailing = 4,
    /// Of a user and password before an "@".
    inUserInfo = 8,
    /// Continues a link whatever is around it.
    plainInTail = 16,
    /// Every link has one of these after its scheme, in its host or in its address.
    mark = 32,
    blank = 64
};

inline constexpr auto characterTraits = [] {
    std::array<std::uint8_t, 256> table{};
    const auto give = [&table](std::string_view characters, std::uint8_t trait) {
        for (const char c : characters)
            table[static_cast<unsigned char>(c)] |= trait;
    };
    for (std::size_t c = 0; c <= 0x20; ++c)
        table[c] |= endsLink;
    table[0x7F] |= endsLink;
    give(asciiAlphanumerics, inWord | inUserInfo | plainInTail);
    give(".-_+", inWord);
    give("<>\"`{}|\\^", endsLink);
    give(".,;:!?'([&", trailing);
    give("-._~%!$*+=:;", inUserInfo);
    give("-._~%!$*+=;,/?#@", plainInTail);
    give(".:@", mark);
    give(" \t\r\n", blank);
    return table;
}();

inline bool hasTrait(char c, CharacterTrait trait) {
    return (characterTraits[static_cast<unsigned char>(c)] & trait) != 0;
}

inline bool isAt(std::string_view text, std::size_t position, std::string_view piece) {
    return position < text.size() && text.substr(position, piece.size()) == piece;
}

}  // namespace platform
