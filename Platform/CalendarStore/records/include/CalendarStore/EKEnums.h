#pragma once

namespace platform {

/// Raw values are those that the texts of stored data and of other programs use.
enum class EKEntityType { event = 0, reminder = 1 };
enum class EKAuthorizationStatus { notDetermined = 0, restricted = 1, denied = 2, fullAccess = 3 };
enum class EKEventStatus { none = 0, confirmed = 1, tentative = 2, canceled = 3 };
enum class EKCalendarType { local = 0, calDAV = 1, exchange = 2, subscription = 3, birthday = 4 };
enum class EKParticipantRole { unknown = 0, required = 1, optional = 2, chair = 3, nonParticipant = 4 };
enum class EKParticipantStatus {
    unknown = 0,
    pending = 1,
    accepted = 2,
    declined = 3,
    tentative = 4,
    delegated = 5,
    completed = 6,
    inProcess = 7
};

}  // namespace platform
