#pragma once

#include <TimeAndText/Date.h>
#include <TimeAndText/LocalTime.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A time zone as a table of offsets with a rule for the time after it. Immutable, cheap to copy, safe
/// from any thread. Offsets come from the system's zone files, not from ICU's own data, which is years
/// older on the systems that this runs on.
class TimeZone {
  public:
    /// One change of offset: from `at` (seconds since 1970 UTC) on, local time is UTC + offset.
    struct Transition {
        std::int64_t at = 0;
        int offset = 0;
    };

    static TimeZone utc();
    static TimeZone fixed(int offsetSeconds, std::string name);
    /// The zone file `name` ("Europe/Berlin") below `directory`; nothing when there is none, when it cannot
    /// be read or when the name tries to leave the directory. Files are read once and then shared.
    static std::optional<TimeZone> named(std::string_view name,
                                         const std::filesystem::path& directory = "/usr/share/zoneinfo");
    /// A zone from outside the system (a calendar file's own definition): `before` holds until the first
    /// transition; transitions ascend; `footer` is a POSIX TZ rule for the time after the last one, or empty.
    static TimeZone fromTransitions(std::string name, int before, std::vector<Transition> transitions,
                                    std::string_view footer = {});

    /// A zone that a POSIX TZ rule defines ("CET-1CEST,M3.5.0,M10.5.0/3"); nothing when it is malformed.
    static std::optional<TimeZone> fromPosixRule(std::string_view rule);

    const std::string& name() const;
    /// Seconds to add to UTC to get local time at that moment.
    int offsetAt(Date moment) const;
    LocalTime localTime(Date moment) const;
    /// The moment of a wall-clock reading. A reading in a gap takes the offset before the gap; one that
    /// occurs twice means the first.
    Date date(const LocalTime& local) const;
    /// True when the reading is skipped by a change of offset.
    bool isInGap(const LocalTime& local) const;

    /// Of the same name and with the same offsets at every moment.
    friend bool operator==(const TimeZone& a, const TimeZone& b) {
        return a.table_ == b.table_ || hasEqualTable(a, b);
    }

  private:
    struct Table;
    static bool hasEqualTable(const TimeZone& a, const TimeZone& b);
    explicit TimeZone(std::shared_ptr<const Table> table);
    std::shared_ptr<const Table> table_;
};

}  // namespace platform
