#include <CalendarStore/EKParticipant.h>

#include <TimeAndText/Ascii.h>

#include <algorithm>

namespace platform {
namespace {

/// Length of the scheme in front of the colon; 0 when the address has none.
std::size_t schemeLength(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos || colon == 0) return 0;
    const auto scheme = address.substr(0, colon);
    if (!isAsciiLetter(scheme.front())) return 0;
    const bool valid = std::all_of(scheme.begin(), scheme.end(), [](char c) {
        return isAsciiAlphanumeric(c) || c == '+' || c == '-' || c == '.';
    });
    return valid ? colon : 0;
}

}  // namespace

std::optional<std::string> EKParticipant::scheme() const {
    const auto length = schemeLength(url);
    if (length == 0) return std::nullopt;
    return url.substr(0, length);
}

std::optional<std::string> EKParticipant::resourceSpecifier() const {
    const auto length = schemeLength(url);
    if (length == 0) return std::nullopt;
    return url.substr(length + 1);
}

std::optional<std::string> EKParticipant::address() const {
    if (email) return email;
    if (scheme() == "mailto") return resourceSpecifier();
    if (schemeLength(url) == 0 && url.find('@') != std::string::npos) return url;
    return std::nullopt;
}

std::string EKParticipant::description() const {
    std::string text = "participant (url = " + url;
    if (name) text += "; name = " + *name;
    if (const auto mail = address()) text += "; email = " + *mail;
    text += "; role = " + std::to_string(static_cast<int>(participantRole)) +
            "; status = " + std::to_string(static_cast<int>(participantStatus)) + ";)";
    return text;
}

ContactPredicate EKParticipant::contactPredicate() const {
    return {.email = address().value_or(""), .name = name.value_or("")};
}

}  // namespace platform
