#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A link found in free text: byte offsets into the UTF-8 text, end not included.
struct DetectedLink {
    std::size_t start = 0;
    std::size_t end = 0;

    friend bool operator==(const DetectedLink&, const DetectedLink&) = default;
};

/// Finds links as a careful human would: with and without scheme, custom schemes, mail addresses; trailing
/// punctuation left out, balanced parentheses kept. In text order, without overlap. Safe from any thread.
std::vector<DetectedLink> detectLinks(std::string_view text);

/// The address of a link that was written in HTML: "&amp;", "&#38;", "&#x26;" and the numbers of ASCII
/// letters, digits and separators become these characters.
std::string withoutCharacterReferences(std::string_view link);
/// True when the text holds an HTML tag ("<a href=…>", "</p>", "<br/>"); an address in angle brackets is
/// none.
bool isMarkup(std::string_view text);

/// Converts ascending byte offsets of UTF-8 text to UTF-16 units.
std::vector<std::size_t> utf16Offsets(std::string_view text, const std::vector<std::size_t>& byteOffsets);

}  // namespace platform
