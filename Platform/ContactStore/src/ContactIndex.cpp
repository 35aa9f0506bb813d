#include "ContactIndex.h"

#include <TimeAndText/Normalization.h>
#include <TimeAndText/PersonName.h>
#include <TimeAndText/Text.h>

#include <algorithm>

namespace platform {
namespace {

/// Letter case and ways of writing the same letter are ignored.
std::string addressKey(std::string_view address) {
    return canonicallyComposed(lowercased(trimmed(address)));
}

/// Blanks are ignored too.
std::string nameKey(std::string_view name) {
    std::string key;
    for (const auto& word : words(canonicallyComposed(lowercased(name))))
        key += (key.empty() ? "" : " ") + word;
    return key;
}

/// "Harper, John" is John Harper.
std::string readingOrder(std::string_view name) {
    constexpr PersonNameComponentsFormatter formatter(PersonNameComponentsFormatter::Style::default_);
    const auto parts = formatter.personNameComponents(name);
    return parts ? parts->givenName + " " + parts->familyName : std::string();
}

}  // namespace

std::string CardPlace::identifier() const {
    return card().uid.empty() ? file->path.string() + "#" + std::to_string(number + 1) : card().uid;
}

ContactIndex::ContactIndex(std::vector<std::shared_ptr<const CardFile>> files) : files_(std::move(files)) {
    const auto enter = [this](Numbers& numbers, std::string key) {
        if (key.empty()) return;
        auto& list = numbers[std::move(key)];
        const auto number = static_cast<std::uint32_t>(places_.size());
        if (list.empty() || list.back() != number) list.push_back(number);
    };
    for (const auto& file : files_) {
        for (std::size_t i = 0; i < file->cards.size(); ++i) {
            const auto& card = file->cards[i];
            for (const auto& email : card.emails)
                enter(byEmail_, addressKey(email));
            for (const auto& name : card.names)
                enter(byName_, nameKey(name));
            places_.push_back({file.get(), i});
        }
    }
}

std::vector<CardPlace> ContactIndex::placesOf(const Numbers& numbers, const std::string& key) const {
    std::vector<CardPlace> found;
    const auto known = key.empty() ? numbers.end() : numbers.find(key);
    if (known == numbers.end()) return found;
    for (const auto number : known->second)
        found.push_back(places_[number]);
    return found;
}

std::vector<CardPlace> ContactIndex::find(const ContactPredicate& predicate) const {
    auto found = placesOf(byEmail_, addressKey(predicate.email));
    // Some calendars give the address where the name belongs.
    if (found.empty() && predicate.name.find('@') != std::string::npos) {
        found = placesOf(byEmail_, addressKey(predicate.name));
    }
    if (found.empty()) found = placesOf(byName_, nameKey(predicate.name));
    if (found.empty()) found = placesOf(byName_, nameKey(readingOrder(predicate.name)));
    return found;
}

}  // namespace platform
