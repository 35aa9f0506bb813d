#pragma once

#include "WrittenTime.h"

#include <TimeAndText/TimeZone.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A VTIMEZONE as written.
struct ZoneDefinition {
    /// A STANDARD or DAYLIGHT part: from its start on, and whenever its rules say so again.
    struct Observance {
        std::optional<WrittenTime> start;
        std::optional<int> offsetFrom;
        std::optional<int> offsetTo;
        std::vector<std::string> rules;
        std::vector<WrittenTime> dates;
    };

    std::string tzid;
    /// X-LIC-LOCATION or the like: a name by which the system may know the zone.
    std::string location;
    std::vector<Observance> observances;
    /// Its lines, by which equal definitions of many files are known as one: also where each part begins
    /// and ends, because the same lines mean something else outside a STANDARD or DAYLIGHT.
    std::string text;

    /// The table of offsets; nothing when no observance is whole.
    std::optional<TimeZone> timeZone() const;
};

using ZoneDefinitionRef = std::shared_ptr<const ZoneDefinition>;

/// "+0100", "-053000", "+01:00".
std::optional<int> parseUtcOffset(std::string_view text);

}  // namespace platform
