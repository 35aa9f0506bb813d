#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

inline bool isAsciiLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
inline bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}
inline bool isAsciiAlphanumeric(char c) {
    return isAsciiLetter(c) || isAsciiDigit(c);
}
inline bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
inline char asciiLowercased(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

/// The character that begins at an offset, as far as links care.
struct LinkCharacter {
    enum class Kind {
        ascii,
        /// Letters, digits and their marks of the Latin script beyond ASCII.
        latin,
        /// Those of other scripts.
        otherScript,
        /// White space, symbols, emoji, punctuation beyond ASCII, and bytes that are not UTF-8.
        separator
    };
    Kind kind = Kind::separator;
    std::size_t size = 1;
};

LinkCharacter linkCharacterAt(std::string_view text, std::size_t offset);
/// Start of the character that ends before `offset` (> 0).
std::size_t previousCharacterStart(std::string_view text, std::size_t offset);

}  // namespace platform
