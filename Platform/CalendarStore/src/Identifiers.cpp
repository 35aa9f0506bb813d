#include "Identifiers.h"

#include <TimeAndText/Ascii.h>

#include <array>

namespace platform {
namespace {

std::string hexadecimal(std::uint64_t value, int digits) {
    constexpr std::string_view alphabet = "0123456789abcdef";
    std::string text(static_cast<std::size_t>(digits), '0');
    for (auto at = text.rbegin(); at != text.rend(); ++at, value >>= 4)
        *at = alphabet[value & 15];
    return text;
}

/// Letters, digits and single hyphens of the text, lower case.
std::string slug(std::string_view text) {
    std::string result;
    for (const char c : text) {
        if (isAsciiAlphanumeric(c)) {
            result += asciiLower(c);
        } else if (!result.empty() && result.back() != '-') {
            result += '-';
        }
        if (result.size() >= 40) break;
    }
    while (!result.empty() && result.back() == '-')
        result.pop_back();
    return result;
}

}  // namespace

std::uint64_t fnv1a(std::string_view bytes, std::uint64_t basis) {
    for (const char c : bytes) {
        basis ^= static_cast<unsigned char>(c);
        basis *= 1099511628211ULL;
    }
    return basis;
}

std::string calendarIdentifier(std::string_view accountName, std::string_view collectionPath) {
    std::string whole(accountName);
    whole.append(1, '\0').append(collectionPath);
    std::string identifier;
    for (const auto& piece : {slug(accountName), slug(collectionPath)}) {
        if (!piece.empty()) identifier += piece + "-";
    }
    return identifier + hexadecimal(fnv1a(whole), 8);
}

std::string eventIdentifier(std::string_view calendarIdentifier, std::string_view uid) {
    std::string whole(calendarIdentifier);
    whole.append(1, '\0').append(uid);
    const auto first = fnv1a(whole);
    return hexadecimal(first, 16) + hexadecimal(fnv1a(whole, first), 16);
}

}  // namespace platform
