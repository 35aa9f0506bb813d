#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The bytes of a file without byte-order mark; UTF-16 (by mark or by its pattern of zeros) becomes UTF-8,
/// anything else stays as it is: lines may be folded inside a character, so only unfolded lines can be
/// judged.
std::string withoutUtf16(std::string bytes);

/// An unfolded line as UTF-8. A line that is not UTF-8 is read as Latin-1 (Windows-1252), or, when it also
/// holds whole UTF-8 characters, keeps those and gets U+FFFD for the rest.
std::string lineAsUtf8(std::string_view line);
/// Text in a named character set ("ISO-8859-2", "Shift_JIS", "koi8-r") as UTF-8; nothing for an unknown
/// name. Text that is said to be Latin-1 is read as by `lineAsUtf8`, since it is often something else.
std::optional<std::string> utf8FromCharset(std::string_view text, const std::string& charset);
/// Quoted-printable to bytes; what is not an escape stays as it is.
std::string decodedQuotedPrintable(std::string_view text);

}  // namespace platform
