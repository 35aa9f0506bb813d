#pragma once

#include <compare>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// A point in time: seconds since 2001-01-01 00:00:00 UTC, with fraction. No zone, no calendar.
class Date {
  public:
    /// Seconds from 1970-01-01 to 2001-01-01, both 00:00 UTC.
    static constexpr double referenceSince1970 = 978307200.0;

    constexpr Date() = default;
    constexpr explicit Date(double secondsSinceReferenceDate) : seconds_(secondsSinceReferenceDate) {}
    static constexpr Date since1970(double seconds) { return Date(seconds - referenceSince1970); }

    constexpr double timeIntervalSinceReferenceDate() const { return seconds_; }
    constexpr double timeIntervalSince1970() const { return seconds_ + referenceSince1970; }
    /// Seconds from `earlier` to this; negative when `earlier` lies later.
    constexpr double timeIntervalSince(Date earlier) const { return seconds_ - earlier.seconds_; }
    constexpr Date addingTimeInterval(double seconds) const { return Date(seconds_ + seconds); }

    /// "2026-03-04 09:41:00 +0000", always UTC, whole seconds.
    std::string description() const;

    friend constexpr bool operator==(Date, Date) = default;
    friend constexpr std::partial_ordering operator<=>(Date, Date) = default;

  private:
    double seconds_ = 0;
};

/// RFC 3339 in UTC with milliseconds: "2026-03-04T09:41:00.000Z".
std::string formatRfc3339(Date date);

/// Reads an RFC 3339 time with "Z" or a numeric offset, with or without a fraction; "T" may be a blank.
std::optional<Date> parseRfc3339(std::string_view text);

}  // namespace platform
