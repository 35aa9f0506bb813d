#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace doubling {

/// Pieces of text until `size` bytes are there; "#" in a piece is its number, so that no two are alike.
inline std::string repeated(std::string_view piece, std::size_t size) {
    std::string text;
    text.reserve(size + piece.size());
    for (std::size_t number = 0; text.size() < size; ++number) {
        for (const char c : piece)
            c == '#' ? text += std::to_string(number) : text += c;
    }
    return text;
}

/// "NAME", "growing piece", what is around it: one way in which a property can grow.
struct Growth {
    std::string_view name;
    std::string_view before;
    std::string_view piece;
    std::string_view after;
};

/// Ways that do not depend on what the property means. A line's name stands before `before`.
inline constexpr Growth lineGrowths[] = {
    {"letters", ":", "a", ""},
    {"words", ":", "some words ", ""},
    {"escapes", ":", "\\,\\n\\;", ""},
    {"separators", ":", ",;:=", ""},
    {"slashes", ":", "/", ""},
    {"quotes", ":", "\"", ""},
    {"not UTF-8", ":", "\xE9", ""},
    {"half characters", ":", "\xC3\xA9\xC3", ""},
    {"folds", ":", "\r\n a", ""},
    {"folded soft breaks", ":", "=\r\n a", ""},
    {"folded soft breaks without a value", "", "=\r\n a", ""},
    {"parameters", "", ";X-P#=v", ":20260304T100000Z"},
    {"parameters of one name", "", ";TZID=v#", ":20260304T100000Z"},
    {"a zone", ";TZID=", "a", ":20260304T100000"},
    {"a zone of slashes", ";TZID=", "/", ":20260304T100000"},
    {"a zone of names", ";TZID=", "/Europe/Berlin", ":20260304T100000"},
    {"carets", ";CN=", "^'^n^^", ":mailto:a@example.org"},
    {"quoted parameters", "", ";X-P=\"a;b:c\"", ":mailto:a@example.org"},
    {"an open quote", ";CN=\"", ";a:", ""},
    {"types", ";TYPE=", "home,", ":value"},
    {"semicolons", "", ";", ":value"},
};

}  // namespace doubling
