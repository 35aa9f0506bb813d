#include "ItemParticipants.h"

#include <algorithm>

namespace platform {
namespace {

/// The parameter's word in upper case; nothing when it is absent or empty.
std::optional<std::string> word(const ContentLine& line, std::string_view parameter) {
    auto text = asciiUpper(trimmedAscii(line.parameter(parameter).value_or("")));
    return text.empty() ? std::nullopt : std::optional(std::move(text));
}

EKParticipantStatus statusOf(const ContentLine& line) {
    const auto status = word(line, "PARTSTAT");
    if (!status || status == "NEEDS-ACTION") return EKParticipantStatus::pending;
    if (status == "ACCEPTED") return EKParticipantStatus::accepted;
    if (status == "DECLINED") return EKParticipantStatus::declined;
    if (status == "TENTATIVE") return EKParticipantStatus::tentative;
    if (status == "DELEGATED") return EKParticipantStatus::delegated;
    if (status == "COMPLETED") return EKParticipantStatus::completed;
    if (status == "IN-PROCESS") return EKParticipantStatus::inProcess;
    return EKParticipantStatus::unknown;
}

EKParticipantRole roleOf(const ContentLine& line) {
    const auto role = word(line, "ROLE");
    if (!role || role == "REQ-PARTICIPANT") return EKParticipantRole::required;
    if (role == "CHAIR") return EKParticipantRole::chair;
    if (role == "OPT-PARTICIPANT") return EKParticipantRole::optional;
    if (role == "NON-PARTICIPANT") return EKParticipantRole::nonParticipant;
    return EKParticipantRole::unknown;
}

std::string withLowerCaseScheme(std::string_view address) {
    const auto colon = address.find(':');
    if (colon == std::string_view::npos) return std::string(address);
    return asciiLower(address.substr(0, colon)).append(address.substr(colon));
}

EKParticipant participantOf(const ContentLine& line, const std::vector<std::string>& ownAddresses) {
    EKParticipant participant;
    participant.url = withLowerCaseScheme(line.value);
    participant.name = line.parameter("CN");
    participant.email = line.parameter("EMAIL");
    if (participant.email && participant.email->empty()) participant.email.reset();
    participant.participantRole = roleOf(line);
    participant.participantStatus = statusOf(line);
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

void readParticipants(const std::vector<ContentLine>& lines, const std::vector<std::string>& ownAddresses,
                      ItemDetails& details) {
    for (const auto& line : lines) {
        if (!line.is("ATTENDEE")) continue;
        if (!details.attendees) details.attendees.emplace();
        details.attendees->push_back(participantOf(line, ownAddresses));
    }
    const auto* line = firstNamed(lines, "ORGANIZER");
    if (!line) return;
    auto organizer = participantOf(*line, ownAddresses);
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
