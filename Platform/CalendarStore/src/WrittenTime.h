#pragma once

#include <CalendarFiles/ContentLine.h>
#include <TimeAndText/TimeZone.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A date or a time as a file writes it, before its zone was looked up.
struct WrittenTime {
    LocalTime local;
    bool isDate = false;
    bool isUtc = false;
    /// Absent for floating times, dates and UTC. Shared by the times of a line.
    std::shared_ptr<const std::string> tzid;
};

/// What the parameters of a line say about its times.
struct TimeParameters {
    /// VALUE=DATE.
    bool isDate = false;
    std::shared_ptr<const std::string> tzid;
};

/// A duration as written: days (and weeks) follow the calendar, the rest is elapsed time. Both have one sign.
struct WrittenDuration {
    int days = 0;
    std::int64_t seconds = 0;

    double approximateSeconds() const {
        return static_cast<double>(days) * 86400.0 + static_cast<double>(seconds);
    }
};

/// "20260304", "20260304T0941", "20260304T094100", "20260304T094100Z"; nothing for a date that does not
/// exist.
std::optional<WrittenTime> parseWrittenTime(std::string_view value);
std::optional<WrittenTime> parseWrittenTime(std::string_view value, const TimeParameters& parameters);
/// "-P1W", "PT15M", "P1DT2H".
std::optional<WrittenDuration> parseDuration(std::string_view text);

}  // namespace platform
