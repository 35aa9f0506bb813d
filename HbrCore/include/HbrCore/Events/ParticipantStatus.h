#pragma once

#include <CalendarStore/EKEnums.h>

#include <array>

namespace hbr {

enum class ParticipantStatus { accepted, tentative, declined, pending, unknown };

inline constexpr std::array allParticipantStatuses = {
    ParticipantStatus::accepted, ParticipantStatus::tentative, ParticipantStatus::declined,
    ParticipantStatus::pending, ParticipantStatus::unknown};

ParticipantStatus participantStatus(platform::EKParticipantStatus status);

}  // namespace hbr
