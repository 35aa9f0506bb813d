#pragma once

#include <TimeAndText/Ascii.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// One unfolded line "NAME;PARAMETERS:VALUE" in its pieces. The views point into the line.
struct ContentLine {
    std::string_view name;
    /// Everything between the name and the colon, without the leading semicolon.
    std::string_view parameters;
    std::string_view value;

    /// Nothing when the line has no name or no colon outside quotes.
    static std::optional<ContentLine> parse(std::string_view line);

    /// Letter case ignored; `name` in upper case.
    bool is(std::string_view upperName) const;
    /// First value of the parameter, quotes taken away and "^n", "^'", "^^" decoded.
    std::optional<std::string> parameter(std::string_view upperName) const;
    /// Whether the word is among the values of its TYPE parameters, or is a parameter without a name,
    /// as in the oldest cards. Letter case ignored.
    bool hasType(std::string_view upperWord) const;
};

/// Pieces between commas.
std::vector<std::string_view> commaSeparated(std::string_view text);
/// A TEXT value without its escapes: "\n" and "\N" are line ends, and a backslash before , ; : " or another
/// backslash is taken away. Any other backslash stays, as in "C:\Users".
std::string unescapedText(std::string_view text);

}  // namespace platform
