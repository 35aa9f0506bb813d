#pragma once

#include <string>
#include <string_view>

// Questions about ASCII characters. The process's locale has no influence; bytes beyond ASCII belong to no
// class and are never changed.
namespace platform {

inline constexpr std::string_view asciiBlanks = " \t\r\n";
inline constexpr std::string_view asciiAlphanumerics =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

constexpr bool isAscii(char c) {
    return static_cast<unsigned char>(c) < 0x80;
}
constexpr bool isAsciiDigit(char c) {
    return c >= '0' && c <= '9';
}
constexpr bool isAsciiUpper(char c) {
    return c >= 'A' && c <= 'Z';
}
constexpr bool isAsciiLower(char c) {
    return c >= 'a' && c <= 'z';
}
constexpr bool isAsciiLetter(char c) {
    return isAsciiUpper(c) || isAsciiLower(c);
}
constexpr bool isAsciiAlphanumeric(char c) {
    return isAsciiLetter(c) || isAsciiDigit(c);
}
constexpr char asciiLower(char c) {
    return isAsciiUpper(c) ? static_cast<char>(c - 'A' + 'a') : c;
}
constexpr char asciiUpper(char c) {
    return isAsciiLower(c) ? static_cast<char>(c - 'a' + 'A') : c;
}
/// 0 to 15, -1 for any other character.
constexpr int hexDigitValue(char c) {
    if (isAsciiDigit(c)) return c - '0';
    const char lower = asciiLower(c);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool isAscii(std::string_view text);
std::string asciiLower(std::string_view text);
std::string asciiUpper(std::string_view text);
bool equalIgnoringCase(std::string_view a, std::string_view b);
/// Without blanks and line ends around it.
std::string_view trimmedAscii(std::string_view text);

}  // namespace platform
