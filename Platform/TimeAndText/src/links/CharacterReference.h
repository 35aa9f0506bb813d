#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace platform {

/// A character that HTML writes as a reference: "&amp;", "&#38;", "&#x26;".
struct CharacterReference {
    char character = '&';
    /// Bytes of the reference, from "&" to ";".
    std::size_t size = 0;
};

/// The reference at the beginning of the text when it stands for a character that a URL holds: "&amp;" (also
/// escaped several times: "&amp;amp;") or an ASCII letter, digit or separator by its number. Quotes, angle
/// brackets, blanks and punctuation are left to the scanner, which ends a link there.
std::optional<CharacterReference> urlCharacterReference(std::string_view text);

}  // namespace platform
