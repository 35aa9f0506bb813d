#pragma once

#include <HbrCore/Events/ParticipantStatus.h>
#include <System/Environment.h>
#include <Values/ImageBytes.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// One who takes part in an event, as it is shown: named and pictured by the contacts where they know them.
struct Participant {
    std::string id;
    std::optional<std::string> givenName;
    std::optional<std::string> familyName;
    std::optional<std::string> email;
    /// What the calendar calls them; used where there are no names.
    std::string fallbackName;
    std::optional<platform::ImageBytes> image;
    bool isOrganizer = false;
    ParticipantStatus status = ParticipantStatus::unknown;

    /// In capitals; "–" where nothing has any.
    std::string initials() const;
    /// The organizer's says so behind it; without an environment, in the words of Environment::current().
    std::string displayName(const platform::Environment& environment) const;
    std::string displayName() const;

    /// By id, else by e-mail address as written where both have one. Not transitive.
    friend bool operator==(const Participant& a, const Participant& b) {
        return a.id == b.id || (a.email && b.email && *a.email == *b.email);
    }
};

/// Without those that equal an organizer before them, who is often among the attendees too.
std::vector<Participant> withOrganizersOnce(std::vector<Participant> participants);

}  // namespace hbr

/// Of every field, so stricter than equality.
template <>
struct std::hash<hbr::Participant> {
    std::size_t operator()(const hbr::Participant& participant) const noexcept;
};
