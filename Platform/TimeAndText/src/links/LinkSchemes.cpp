#include "LinkSchemes.h"

#include "LinkCharacters.h"

#include <algorithm>
#include <array>
#include <initializer_list>

namespace platform {

namespace {

constexpr std::size_t longestScheme = 40;

// Sorted. Calls, mail and messages, as invitations have them.
constexpr auto schemesWithoutSlashes = std::to_array<std::string_view>(
    {"callto", "facetime",  "facetime-audio", "facetime-group", "geo",     "h323",  "lync",  "magnet",
     "mailto", "matrix",    "ms-teams",       "msteams",        "sip",     "sips",  "skype", "sms",
     "tel",    "ts3server", "webcal",         "xmpp",           "zoommtg", "zoomus"});
static_assert(std::ranges::is_sorted(schemesWithoutSlashes));

bool isSchemeCharacter(char c) {
    return isAsciiAlphanumeric(c) || c == '+' || c == '-' || c == '.';
}

bool isKnown(std::string_view scheme) {
    return isWebScheme(scheme) || std::ranges::binary_search(schemesWithoutSlashes, asciiLower(scheme));
}

}  // namespace

bool isWebScheme(std::string_view scheme) {
    return (scheme.size() == 4 || scheme.size() == 5) &&
           std::string_view("https").starts_with(asciiLower(scheme));
}

std::optional<std::size_t> schemeStart(std::string_view word, bool hasSlashes) {
    auto start = word.size();
    while (start > 0 && word.size() - start < longestScheme && isSchemeCharacter(word[start - 1]))
        --start;
    while (start < word.size() && !isAsciiLetter(word[start]))
        ++start;
    if (word.size() - start < 2) return std::nullopt;
    const auto scheme = word.substr(start);
    if (!hasSlashes) {
        if (isWebScheme(scheme) || !isKnown(scheme)) return std::nullopt;
        return start;
    }
    if (isKnown(scheme)) return start;
    // Words glued to the most common schemes: "Joinhttps://", "1.https://".
    for (const std::string_view web : {"https", "http"}) {
        if (scheme.size() > web.size() && isWebScheme(scheme.substr(scheme.size() - web.size())))
            return word.size() - web.size();
    }
    return start;
}

bool takesNumbers(std::string_view scheme) {
    const auto lower = asciiLower(scheme);
    return lower == "tel" || lower == "sms" || lower == "callto";
}

bool mayFollowScheme(std::string_view scheme, std::string_view rest) {
    const char first = rest.front();
    if (takesNumbers(scheme))
        return isAsciiDigit(first) || std::string_view("+(%*#").find(first) != std::string_view::npos;
    if (!isAscii(first)) return linkCharacterAt(rest, 0).kind != LinkCharacter::Kind::separator;
    return isAsciiAlphanumeric(first) || first == '/' || first == '+' || first == '[' || first == '%' ||
           first == '?' || first == '_' || first == '~';
}

bool beginsWebAddress(std::string_view text) {
    const auto colon = text.substr(0, std::string_view("https://").size()).find("://");
    return colon != std::string_view::npos && isWebScheme(text.substr(0, colon));
}

bool beginsWww(std::string_view text) {
    return equalIgnoringCase(text.substr(0, 4), "www.");
}

}  // namespace platform
