#pragma once

#include "ContactCard.h"

#include <Values/ContactPredicate.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

/// The cards of one file.
struct CardFile {
    std::filesystem::path path;
    std::vector<ContactCard> cards;
};

/// One card and its place.
struct CardPlace {
    const CardFile* file = nullptr;
    std::size_t number = 0;

    const ContactCard& card() const { return file->cards[number]; }
    /// The card's UID, else its place.
    std::string identifier() const;
};

/// Finds cards by address and name. Constant once made.
class ContactIndex {
  public:
    explicit ContactIndex(std::vector<std::shared_ptr<const CardFile>> files);

    std::vector<CardPlace> find(const ContactPredicate& predicate) const;
    const std::vector<CardPlace>& all() const { return places_; }

  private:
    using Numbers = std::unordered_map<std::string, std::vector<std::uint32_t>>;

    std::vector<CardPlace> placesOf(const Numbers& numbers, const std::string& key) const;

    std::vector<std::shared_ptr<const CardFile>> files_;
    std::vector<CardPlace> places_;
    Numbers byEmail_;
    Numbers byName_;
};

}  // namespace platform
