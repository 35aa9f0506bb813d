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

/// The reference at the beginning of the text when it represents a character that is valid in a URL: "&amp;"
/// (also escaped several times: "&amp;amp;") or an ASCII letter, digit or separator by its number.
std::optional<CharacterReference> urlCharacterReference(std::string_view text);
/// Whether the text begins with a reference that ends a link in HTML: a quote, an angle bracket, a blank, or
/// any number that is not one of a URL's characters.
bool isMarkupReference(std::string_view text);

}  // namespace platform
