#include "CardPicture.h"

#include <Values/Base64.h>

#include <algorithm>

#include "CardLines.h"
#include "CardProperty.h"
#include "ContactCard.h"

namespace platform {
namespace {

/// What follows "data:…;base64,"; nothing for another address. A comma may be escaped.
std::optional<std::string_view> dataOf(std::string_view address) {
    if (!equalIgnoringCase(address.substr(0, 5), "data:")) return std::nullopt;
    const auto comma = address.find(',');
    if (comma == std::string_view::npos) return std::string_view();
    auto head = address.substr(0, comma);
    if (head.ends_with('\\')) head.remove_suffix(1);
    const bool isEncoded = head.size() > 7 && equalIgnoringCase(head.substr(head.size() - 7), ";base64");
    return isEncoded ? address.substr(comma + 1) : std::string_view();
}

bool isAddress(const ContentLine& content) {
    const auto kind = content.parameter("VALUE");
    if (kind && (equalIgnoringCase(*kind, "URI") || equalIgnoringCase(*kind, "URL"))) return true;
    return !isBase64(content) && content.value.find("://") != std::string_view::npos;
}

}  // namespace

std::optional<std::string> pictureOf(std::string_view cardText, int firstLine,
                                     const CardComplaint& complain) {
    std::optional<std::string> best;
    int bestPreference = 0;
    for (CardLines lines(cardText); lines.next();) {
        if (!lines.content()) continue;
        const CardProperty property(*lines.content());
        if (!property.is("PHOTO") || lines.tooLong()) continue;
        if (best && property.preference() >= bestPreference) continue;
        const auto value = trimmedAscii(property.content().value);
        auto encoded = dataOf(value);
        // Nothing is fetched from elsewhere.
        if (!encoded && isAddress(property.content())) continue;
        if (!encoded) encoded = value;
        auto bytes = decodedBase64(*encoded);
        if (!bytes || bytes->empty()) {
            complain(firstLine + lines.number() - 1, "PHOTO", "is not readable base64; left out");
            continue;
        }
        best = std::move(bytes);
        bestPreference = property.preference();
    }
    return best;
}

}  // namespace platform
