#pragma once

#include <CalendarStore/EKEnums.h>
#include <Values/ContactPredicate.h>

#include <optional>
#include <string>

namespace platform {

struct EKParticipant {
    std::optional<std::string> name;
    /// The address as written, with its scheme in lower case ("mailto:ada@example.org").
    std::string url;
    /// The mail address that the source gives beside an address that is not one (EMAIL parameter).
    std::optional<std::string> email;
    EKParticipantRole participantRole = EKParticipantRole::required;
    EKParticipantStatus participantStatus = EKParticipantStatus::pending;
    bool isCurrentUser = false;

    /// The part after the scheme and colon; absent without a scheme.
    std::optional<std::string> resourceSpecifier() const;
    std::optional<std::string> scheme() const;
    /// The mail address without "mailto:"; absent when the participant has none.
    std::optional<std::string> address() const;
    /// "… name = NAME; email = ADDRESS; …" with the parts that are there.
    std::string description() const;
    ContactPredicate contactPredicate() const;

    friend bool operator==(const EKParticipant&, const EKParticipant&) = default;
};

}  // namespace platform
