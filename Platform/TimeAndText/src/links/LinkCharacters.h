#pragma once

#include <TimeAndText/Ascii.h>

#include <cstddef>
#include <string_view>

namespace platform {

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
