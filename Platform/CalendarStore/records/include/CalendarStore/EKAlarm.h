#pragma once

#include <TimeAndText/Date.h>

#include <optional>

namespace platform {

/// When to notify the owner of an item: at a moment, or so many seconds from its start (negative:
/// before).
struct EKAlarm {
    std::optional<Date> absoluteDate;
    double relativeOffset = 0;

    friend bool operator==(const EKAlarm&, const EKAlarm&) = default;
};

}  // namespace platform
