#pragma once

#include <CalendarStore/EKEnums.h>
#include <CalendarStore/EKParticipant.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/TimeZone.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// What an item says beside its times, read from its text when somebody asks for the item.
struct ItemDetails {
    struct Alarm {
        std::optional<Date> absoluteDate;
        /// Seconds from the start, or from the end.
        double offset = 0;
        bool fromEnd = false;
    };

    std::optional<std::string> title;
    std::optional<std::string> location;
    std::optional<std::string> notes;
    std::optional<std::string> url;
    EKEventStatus status = EKEventStatus::none;
    std::optional<EKParticipant> organizer;
    std::optional<std::vector<EKParticipant>> attendees;
    std::optional<double> travelTime;
    /// VALARMs other than ACTION:NONE; absent without any.
    std::optional<std::vector<Alarm>> alarms;

    /// `text` is one component; `ownAddresses` are the user's, in any letter case; floating alarm times are
    /// read in `zone`.
    static ItemDetails parse(std::string_view text, const std::vector<std::string>& ownAddresses,
                             const TimeZone& zone);
};

}  // namespace platform
