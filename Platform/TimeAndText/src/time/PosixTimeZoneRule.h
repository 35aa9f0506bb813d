#pragma once

#include <TimeAndText/TimeZone.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace platform {

/// A yearly rule as the last line of a zone file writes it (POSIX.1 TZ, with the extensions of RFC 8536:
/// times of day from -167 to 167 hours): "CET-1CEST,M3.5.0,M10.5.0/3", "<+03>-3".
class PosixTimeZoneRule {
  public:
    /// Nothing when the text is malformed.
    static std::optional<PosixTimeZoneRule> parse(std::string_view text);

    /// Seconds east of Greenwich.
    int standardOffset() const { return standardOffset_; }
    bool hasDaylightTime() const { return daylight_.has_value(); }
    /// The two changes that the rule dates in `year`, in order; only with daylight time.
    std::array<TimeZone::Transition, 2> transitionsIn(int year) const;

    /// One day of each year.
    struct DayOfYear {
        enum class Kind { julianWithoutLeapDay, zeroBased, monthWeekWeekday };
        Kind kind = Kind::zeroBased;
        int day = 0;  // of the year, or the weekday (0 Sunday)
        int month = 0;
        int week = 0;  // 5 means the last
        int secondOfDay = 2 * 3600;

        std::int64_t localSecondsIn(int year) const;
    };

  private:
    struct Daylight {
        int offset = 0;
        DayOfYear start;
        DayOfYear end;
    };
    int standardOffset_ = 0;
    std::optional<Daylight> daylight_;
};

}  // namespace platform
