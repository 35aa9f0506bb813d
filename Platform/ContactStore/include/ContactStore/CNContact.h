#pragma once

#include <Values/ImageBytes.h>

#include <optional>
#include <string>

namespace platform {

enum class CNAuthorizationStatus { notDetermined = 0, restricted = 1, denied = 2, authorized = 3 };

/// The fields that a query may ask for.
enum class CNContactKey { givenName, familyName, thumbnailImageData };
inline constexpr auto CNContactGivenNameKey = CNContactKey::givenName;
inline constexpr auto CNContactFamilyNameKey = CNContactKey::familyName;
inline constexpr auto CNContactThumbnailImageDataKey = CNContactKey::thumbnailImageData;

/// One card of an address book. Fields that were not asked for, and those that the card lacks, are empty.
struct CNContact {
    /// The card's UID, else made of its place; the same in every answer.
    std::string identifier;
    std::string givenName;
    std::string familyName;
    std::optional<ImageBytes> thumbnailImageData;
};

}  // namespace platform
