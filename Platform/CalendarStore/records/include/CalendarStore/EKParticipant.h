#pragma once

#include <CalendarStore/EKEnums.h>
#include <Foundation/ContactPredicate.h>

#include <optional>
#include <string>

namespace platform {

struct EKParticipant {
    std::optional<std::string> name;
    /// The address as written, with its scheme in lower case ("mailto:ada@example.org").
    std::string url;
    EKParticipantRole participantRole = EKParticipantRole::required;
    EKParticipantStatus participantStatus = EKParticipantStatus::pending;
    bool isCurrentUser = false;

    /// The part after the scheme and colon; absent without a scheme.
    std::optional<std::string> resourceSpecifier() const;
    std::optional<std::string> scheme() const;
    /// "… name = NAME; email = ADDRESS; …", the address without "mailto:".
    std::string description() const;
    ContactPredicate contactPredicate() const;

    friend bool operator==(const EKParticipant&, const EKParticipant&) = default;
};

}  // namespace platform
