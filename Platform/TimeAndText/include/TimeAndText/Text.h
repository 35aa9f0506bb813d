#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Operations on UTF-8 text that need more than bytes. All take any bytes; bad UTF-8 never fails hard.
namespace platform {

bool isWellFormedUtf8(std::string_view text);
/// Replaces what is not UTF-8 by U+FFFD.
std::string sanitizedUtf8(std::string_view text);
/// White space and line breaks (Unicode) removed at both ends.
std::string trimmed(std::string_view text);
/// Not per locale.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text, std::string_view localeIdentifier);
/// The first letter only, by the locale's rules; the rest stays.
std::string capitalizedFirstLetter(std::string_view text, std::string_view localeIdentifier);
/// User-perceived characters (grapheme clusters).
std::size_t characterCount(std::string_view text);
/// The first n user-perceived characters.
std::string_view firstCharacters(std::string_view text, std::size_t count);
/// The byte offsets of the boundaries of user-perceived characters, with 0 and the text's size.
std::vector<std::size_t> characterBoundaries(std::string_view text);
/// Canonically equivalent texts are equal.
bool canonicallyEqual(std::string_view a, std::string_view b);
std::vector<std::string> split(std::string_view text, std::string_view separator,
                               bool keepEmptyPieces = true);
/// The pieces between white space and line breaks (Unicode).
std::vector<std::string> words(std::string_view text);
/// zlib CRC-32, initial value 0, over the bytes.
std::uint32_t crc32(std::string_view bytes);

}  // namespace platform
