#include <TimeAndText/Ascii.h>

#include <algorithm>

namespace platform {

bool isAscii(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return isAscii(c); });
}

std::string asciiLower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = asciiLower(c);
    return result;
}

std::string asciiUpper(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        c = asciiUpper(c);
    return result;
}

bool equalIgnoringCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() &&
           std::ranges::equal(a, b, [](char x, char y) { return asciiLower(x) == asciiLower(y); });
}

std::string_view trimmedAscii(std::string_view text) {
    const auto first = text.find_first_not_of(asciiBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(asciiBlanks) - first + 1);
}

}  // namespace platform
