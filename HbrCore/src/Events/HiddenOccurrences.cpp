#include <HbrCore/Events/HiddenOccurrences.h>

#include <utility>

namespace hbr {

std::optional<Occurrence> Occurrence::of(const platform::EKEvent& event) {
    if (!event.originalStart) return std::nullopt;
    return Occurrence{event.eventIdentifier, *event.originalStart};
}

std::optional<Occurrence> Occurrence::parse(std::string_view text) {
    const std::size_t space = text.find(' ');
    if (space == std::string_view::npos || space == 0) return std::nullopt;
    const auto start = platform::parseRfc3339(text.substr(space + 1));
    if (!start) return std::nullopt;
    return Occurrence{std::string(text.substr(0, space)), *start};
}

std::string Occurrence::text() const {
    return eventIdentifier + " " + platform::formatRfc3339(originalStart);
}

HiddenOccurrences::HiddenOccurrences(std::set<Occurrence> occurrences) {
    if (occurrences.empty()) return;
    occurrences_ = std::make_shared<const std::set<Occurrence>>(std::move(occurrences));
}

bool HiddenOccurrences::contains(const platform::EKEvent& event) const {
    if (!occurrences_) return false;
    const auto occurrence = Occurrence::of(event);
    return occurrence && occurrences_->contains(*occurrence);
}

const std::set<Occurrence>& HiddenOccurrences::all() const {
    static const std::set<Occurrence> none;
    return occurrences_ ? *occurrences_ : none;
}

}  // namespace hbr
