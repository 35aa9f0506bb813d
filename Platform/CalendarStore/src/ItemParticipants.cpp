#include "ICalComponent.h"

#include <Foundation/ContentLine.h>

#include <algorithm>

namespace platform {
namespace {

/// The parameter's word in upper case; the library's own enumeration does not know every word.
std::optional<std::string> word(icalproperty* property, const char* parameter) {
    char* text = icalproperty_get_parameter_as_string_r(property, parameter);
    if (!text) return std::nullopt;
    auto result = asciiUpper(trimmedAscii(text));
    icalmemory_free_buffer(text);
    return result;
}

EKParticipantStatus statusOf(icalproperty* property) {
    const auto status = word(property, "PARTSTAT");
    if (!status || status == "NEEDS-ACTION") return EKParticipantStatus::pending;
    if (status == "ACCEPTED") return EKParticipantStatus::accepted;
    if (status == "DECLINED") return EKParticipantStatus::declined;
    if (status == "TENTATIVE") return EKParticipantStatus::tentative;
    if (status == "DELEGATED") return EKParticipantStatus::delegated;
    if (status == "COMPLETED") return EKParticipantStatus::completed;
    if (status == "IN-PROCESS") return EKParticipantStatus::inProcess;
    return EKParticipantStatus::unknown;
}

EKParticipantRole roleOf(icalproperty* property) {
    const auto role = word(property, "ROLE");
    if (!role || role == "REQ-PARTICIPANT") return EKParticipantRole::required;
    if (role == "CHAIR") return EKParticipantRole::chair;
    if (role == "OPT-PARTICIPANT") return EKParticipantRole::optional;
    if (role == "NON-PARTICIPANT") return EKParticipantRole::nonParticipant;
    return EKParticipantRole::unknown;
}

std::string withLowerCaseScheme(std::string address) {
    const auto colon = address.find(':');
    if (colon == std::string::npos) return address;
    return asciiLower(std::string_view(address).substr(0, colon)) + address.substr(colon);
}

EKParticipant participantOf(icalproperty* property, std::string address,
                            const std::vector<std::string>& ownAddresses) {
    EKParticipant participant;
    participant.url = withLowerCaseScheme(std::move(address));
    if (auto* p = icalproperty_get_first_parameter(property, ICAL_CN_PARAMETER)) {
        participant.name = optionalText(icalparameter_get_cn(p));
    }
    if (auto* p = icalproperty_get_first_parameter(property, ICAL_EMAIL_PARAMETER)) {
        if (auto email = optionalText(icalparameter_get_email(p)); email && !email->empty()) {
            participant.email = std::move(email);
        }
    }
    participant.participantRole = roleOf(property);
    participant.participantStatus = statusOf(property);
    const auto isOwn = [&](const std::optional<std::string>& mail) {
        return mail && std::any_of(ownAddresses.begin(), ownAddresses.end(),
                                   [&](const std::string& own) { return equalIgnoringCase(own, *mail); });
    };
    participant.isCurrentUser = isOwn(participant.address()) ||
                                (participant.scheme() == "mailto" && isOwn(participant.resourceSpecifier()));
    return participant;
}

bool sameAddress(const EKParticipant& a, const EKParticipant& b) {
    if (equalIgnoringCase(a.url, b.url)) return true;
    return a.address() && b.address() && equalIgnoringCase(*a.address(), *b.address());
}

}  // namespace

void readParticipants(icalcomponent* component, const std::vector<std::string>& ownAddresses,
                      ItemDetails& details) {
    for (auto* p = icalcomponent_get_first_property(component, ICAL_ATTENDEE_PROPERTY); p;
         p = icalcomponent_get_next_property(component, ICAL_ATTENDEE_PROPERTY)) {
        const auto address = optionalText(icalproperty_get_attendee(p));
        if (!address) continue;
        if (!details.attendees) details.attendees.emplace();
        details.attendees->push_back(participantOf(p, *address, ownAddresses));
    }
    auto* p = icalcomponent_get_first_property(component, ICAL_ORGANIZER_PROPERTY);
    const auto address = p ? optionalText(icalproperty_get_organizer(p)) : std::nullopt;
    if (!address) return;
    auto organizer = participantOf(p, *address, ownAddresses);
    organizer.participantRole = EKParticipantRole::chair;
    organizer.participantStatus = EKParticipantStatus::unknown;
    if (details.attendees) {
        const auto& attendees = *details.attendees;
        const auto same =
            std::find_if(attendees.begin(), attendees.end(),
                         [&](const EKParticipant& attendee) { return sameAddress(attendee, organizer); });
        if (same != attendees.end()) organizer.participantStatus = same->participantStatus;
    }
    details.organizer = std::move(organizer);
}

}  // namespace platform
