#include <HbrCore/Events/ParticipantStatus.h>

namespace hbr {

ParticipantStatus participantStatus(platform::EKParticipantStatus status) {
    switch (status) {
        case platform::EKParticipantStatus::pending:
            return ParticipantStatus::pending;
        case platform::EKParticipantStatus::accepted:
            return ParticipantStatus::accepted;
        case platform::EKParticipantStatus::declined:
            return ParticipantStatus::declined;
        case platform::EKParticipantStatus::tentative:
            return ParticipantStatus::tentative;
        default:
            return ParticipantStatus::unknown;
    }
}

}  // namespace hbr
