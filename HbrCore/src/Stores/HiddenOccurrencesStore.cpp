#include <HbrCore/Stores/HiddenOccurrencesStore.h>

#include <HbrUtils/TimeConstants.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace hbr {

using platform::PropertyArray;
using platform::PropertyValue;

namespace {

std::optional<Occurrence> occurrenceIn(const PropertyValue& entry) {
    const std::string* text = entry.asString();
    return text ? Occurrence::parse(*text) : std::nullopt;
}

std::set<Occurrence> occurrencesIn(const std::optional<PropertyValue>& stored) {
    std::set<Occurrence> occurrences;
    const PropertyArray* entries = stored ? stored->asArray() : nullptr;
    if (!entries) return occurrences;
    for (const PropertyValue& entry : *entries) {
        if (auto occurrence = occurrenceIn(entry)) occurrences.insert(*std::move(occurrence));
    }
    return occurrences;
}

/// With the entries of `stored` that cannot be read in front.
std::optional<PropertyValue> encoded(const std::set<Occurrence>& occurrences,
                                     const std::optional<PropertyValue>& stored) {
    PropertyArray entries;
    if (const PropertyArray* old = stored ? stored->asArray() : nullptr) {
        std::ranges::copy_if(*old, std::back_inserter(entries),
                             [](const PropertyValue& entry) { return !occurrenceIn(entry); });
    }
    for (const Occurrence& occurrence : occurrences)
        entries.emplace_back(occurrence.text());
    if (entries.empty()) return std::nullopt;
    return PropertyValue(std::move(entries));
}

bool isOf(const Occurrence& occurrence, std::string_view series) {
    return occurrence.eventIdentifier == series;
}

}  // namespace

HiddenOccurrencesStore::HiddenOccurrencesStore(platform::DefaultsDomainRef defaults)
    : defaults_(std::move(defaults)) {}

HiddenOccurrences HiddenOccurrencesStore::all() const {
    return HiddenOccurrences(occurrencesIn(defaults_->value(storageKey)));
}

HiddenOccurrences HiddenOccurrencesStore::of(std::string_view eventIdentifier) const {
    auto occurrences = occurrencesIn(defaults_->value(storageKey));
    std::erase_if(occurrences, [&](const Occurrence& one) { return !isOf(one, eventIdentifier); });
    return HiddenOccurrences(std::move(occurrences));
}

bool HiddenOccurrencesStore::hide(const Occurrence& occurrence, platform::Date now) const {
    return change(now, [occurrence](std::set<Occurrence>& all) { all.insert(occurrence); });
}

bool HiddenOccurrencesStore::show(const Occurrence& occurrence, platform::Date now) const {
    return change(now, [occurrence](std::set<Occurrence>& all) { all.erase(occurrence); });
}

bool HiddenOccurrencesStore::showAll(std::string_view eventIdentifier, platform::Date now) const {
    return change(now, [series = std::string(eventIdentifier)](std::set<Occurrence>& all) {
        std::erase_if(all, [&](const Occurrence& one) { return isOf(one, series); });
    });
}

bool HiddenOccurrencesStore::showAll() const {
    return defaults_->removeValue(storageKey);
}

bool HiddenOccurrencesStore::rename(std::string_view eventIdentifier, const std::string& newIdentifier,
                                    platform::Date now) const {
    return change(now, [old = std::string(eventIdentifier), newIdentifier](std::set<Occurrence>& all) {
        std::set<Occurrence> renamed;
        for (const Occurrence& one : all)
            renamed.insert(isOf(one, old) ? Occurrence{newIdentifier, one.originalStart} : one);
        all = std::move(renamed);
    });
}

bool HiddenOccurrencesStore::change(platform::Date now, Change change) const {
    const platform::Date oldest = now.addingTimeInterval(-days(keptDays));
    return defaults_->update(
        storageKey, [oldest, change = std::move(change)](const std::optional<PropertyValue>& stored) {
            auto occurrences = occurrencesIn(stored);
            const auto before = occurrences;
            change(occurrences);
            if (occurrences == before) return stored;
            std::erase_if(occurrences, [&](const Occurrence& one) { return one.originalStart < oldest; });
            return encoded(occurrences, stored);
        });
}

}  // namespace hbr
