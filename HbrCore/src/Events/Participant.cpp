#include <HbrCore/Events/Participant.h>

#include <HbrLocalization/L10n.h>
#include <TimeAndText/PersonName.h>
#include <TimeAndText/Text.h>

#include <unordered_set>

namespace hbr {

namespace {

using Formatter = platform::PersonNameComponentsFormatter;

constexpr Formatter abbreviatedName(Formatter::Style::abbreviated);
constexpr Formatter fullName(Formatter::Style::default_);

bool hasName(const Participant& participant) {
    return participant.givenName || participant.familyName;
}

platform::PersonNameComponents components(const Participant& participant) {
    return {.namePrefix = {},
            .givenName = platform::trimmed(participant.givenName.value_or("")),
            .middleName = {},
            .familyName = platform::trimmed(participant.familyName.value_or("")),
            .nameSuffix = {}};
}

std::string fallbackInitials(const std::string& fallbackName) {
    if (const auto name = abbreviatedName.personNameComponents(fallbackName)) {
        return abbreviatedName.string(*name);
    }
    return std::string(platform::firstCharacters(fallbackName, 2));
}

class Hasher {
  public:
    template <class T>
    void combine(const T& value) {
        constexpr std::size_t golden = 0x9E3779B97F4A7C15;
        hash_ ^= std::hash<T>{}(value) + golden + (hash_ << 6) + (hash_ >> 2);
    }
    template <class T>
    void combine(const std::optional<T>& value) {
        combine(value ? 1 : 0);
        if (value) combine(*value);
    }
    std::size_t result() const { return hash_; }

  private:
    std::size_t hash_ = 0;
};

}  // namespace

std::string Participant::initials() const {
    const std::string base =
        hasName(*this) ? abbreviatedName.string(components(*this)) : fallbackInitials(fallbackName);
    std::string result = platform::uppercased(platform::trimmed(base), "");
    if (result.empty()) result = fallbackInitials(fallbackName);
    return result.empty() ? "\u2013" : result;
}

std::string Participant::displayName() const {
    return displayName(*platform::Environment::current());
}

std::string Participant::displayName(const platform::Environment& environment) const {
    std::string name = platform::trimmed(hasName(*this) ? fullName.string(components(*this)) : fallbackName);
    if (name.empty()) name = fallbackName;
    if (name.empty()) name = L10n::General::unknown(environment);
    if (isOrganizer) name += " (" + L10n::General::organizer(environment) + ")";
    return name;
}

std::vector<Participant> withOrganizersOnce(std::vector<Participant> participants) {
    std::unordered_set<std::string> ids;
    std::unordered_set<std::string> emails;
    std::erase_if(participants, [&](const Participant& one) {
        if (ids.contains(one.id) || (one.email && emails.contains(*one.email))) return true;
        if (one.isOrganizer) {
            ids.insert(one.id);
            if (one.email) emails.insert(*one.email);
        }
        return false;
    });
    return participants;
}

}  // namespace hbr

std::size_t std::hash<hbr::Participant>::operator()(const hbr::Participant& participant) const noexcept {
    hbr::Hasher hasher;
    hasher.combine(participant.id);
    hasher.combine(participant.givenName);
    hasher.combine(participant.familyName);
    hasher.combine(participant.email);
    hasher.combine(participant.fallbackName);
    hasher.combine(participant.image);
    hasher.combine(participant.isOrganizer);
    hasher.combine(participant.status);
    return hasher.result();
}
