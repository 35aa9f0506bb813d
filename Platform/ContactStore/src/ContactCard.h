#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What is kept of one card; its picture stays in the file until it is needed.
struct ContactCard {
    /// Of the BEGIN line, counted from 1.
    int line = 0;
    /// Its place in the decoded text of the file.
    std::size_t begin = 0;
    std::size_t end = 0;

    /// May be empty.
    std::string uid;
    /// A card of an organization has neither.
    std::string givenName;
    std::string familyName;
    std::vector<std::string> emails;
    /// All that it is called by.
    std::vector<std::string> names;
    bool hasPicture = false;
};

/// Receives what is wrong with a line, or with the card that begins there.
using CardComplaint = std::function<void(int line, const std::string& property, const std::string& text)>;

/// The cards of a text, which is UTF-8 or a single-byte character set. Bad cards are left out alone.
std::vector<ContactCard> readCards(std::string_view text, const CardComplaint& complain);

}  // namespace platform
