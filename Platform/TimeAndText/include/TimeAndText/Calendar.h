#pragma once

#include <TimeAndText/Date.h>
#include <TimeAndText/TimeZone.h>

#include <optional>

namespace platform {

/// Parts of a date; an absent part is not set. Without `timeZone` the calendar's own zone is meant.
struct DateComponents {
    std::optional<int> year = std::nullopt;
    std::optional<int> month = std::nullopt;
    std::optional<int> day = std::nullopt;
    std::optional<int> hour = std::nullopt;
    std::optional<int> minute = std::nullopt;
    std::optional<int> second = std::nullopt;
    std::optional<TimeZone> timeZone = std::nullopt;

    friend bool operator==(const DateComponents&, const DateComponents&) = default;
};

/// Day arithmetic in the Gregorian calendar of one zone, whatever calendar the locale prefers for texts.
/// A midnight that does not exist is the first instant of that day. Immutable, safe from any thread.
class Calendar {
  public:
    explicit Calendar(TimeZone zone) : zone_(std::move(zone)) {}

    const TimeZone& timeZone() const { return zone_; }

    /// Year to second of the moment; no zone, no fraction.
    DateComponents components(Date moment) const;
    /// The moment of the components; parts out of range carry over, absent parts are the smallest
    /// (month and day 1, time 0). Nothing when the year is absent.
    std::optional<Date> date(const DateComponents& components) const;

    /// Keeps the wall-clock time and the fraction of a second, also across a change of offset.
    Date addingDays(Date moment, int days) const;
    /// Elapsed minutes; the wall clock may jump.
    Date addingMinutes(Date moment, int minutes) const;
    Date startOfDay(Date moment) const;
    bool isSameDay(Date a, Date b) const;
    /// 1 Sunday to 7 Saturday.
    int weekday(Date moment) const;
    /// Days from `from` to `to` by the dates alone: 23:59 to 00:01 is 1.
    int daysBetween(Date from, Date to) const;

  private:
    TimeZone zone_;
};

}  // namespace platform
