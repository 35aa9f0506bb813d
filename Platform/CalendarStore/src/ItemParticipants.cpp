#include "ContentLine.h"
#include "ICalComponent.h"

#include <algorithm>

namespace platform {
namespace {

EKParticipantStatus statusOf(icalproperty* property) {
    auto* parameter = icalproperty_get_first_parameter(property, ICAL_PARTSTAT_PARAMETER);
    if (!parameter) return EKParticipantStatus::pending;
    switch (icalparameter_get_partstat(parameter)) {
        case ICAL_PARTSTAT_NEEDSACTION:
            return EKParticipantStatus::pending;
        case ICAL_PARTSTAT_ACCEPTED:
            return EKParticipantStatus::accepted;
        case ICAL_PARTSTAT_DECLINED:
            return EKParticipantStatus::declined;
        case ICAL_PARTSTAT_TENTATIVE:
            return EKParticipantStatus::tentative;
        case ICAL_PARTSTAT_DELEGATED:
            return EKParticipantStatus::delegated;
        case ICAL_PARTSTAT_COMPLETED:
            return EKParticipantStatus::completed;
        case ICAL_PARTSTAT_INPROCESS:
            return EKParticipantStatus::inProcess;
        default:
            return EKParticipantStatus::unknown;
    }
}

EKParticipantRole roleOf(icalproperty* property) {
    auto* parameter = icalproperty_get_first_parameter(property, ICAL_ROLE_PARAMETER);
    if (!parameter) return EKParticipantRole::required;
    switch (icalparameter_get_role(parameter)) {
        case ICAL_ROLE_CHAIR:
            return EKParticipantRole::chair;
        case ICAL_ROLE_REQPARTICIPANT:
            return EKParticipantRole::required;
        case ICAL_ROLE_OPTPARTICIPANT:
            return EKParticipantRole::optional;
        case ICAL_ROLE_NONPARTICIPANT:
            return EKParticipantRole::nonParticipant;
        default:
            return EKParticipantRole::unknown;
    }
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
