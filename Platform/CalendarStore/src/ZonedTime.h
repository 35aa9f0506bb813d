#pragma once

#include "ScannedItem.h"
#include "ZoneLookup.h"

#include <System/Diagnostics.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/TimeZone.h>

#include <cstdint>
#include <filesystem>
#include <optional>

namespace platform {

/// A reading with the zone it is read in. A date is its midnight.
struct ZonedTime {
    LocalTime local;
    TimeZone zone;
    bool isDate = false;

    Date instant() const { return zone.date(local); }
    /// Days since 1970-01-01 of the reading.
    std::int64_t day() const { return secondsOf({local.year, local.month, local.day, 0, 0, 0}) / 86400; }
};

/// How long an item lasts: days follow the calendar of the start's zone, seconds are elapsed time.
struct ItemLength {
    int days = 0;
    std::int64_t seconds = 0;

    Date endAfter(const ZonedTime& start) const;
    double approximateSeconds() const { return days * 86400.0 + static_cast<double>(seconds); }
};

/// Gives the times of one file's items their zones.
class TimeResolver {
  public:
    TimeResolver(const std::filesystem::path& file, TimeZone userZone, ZoneLookup zones,
                 DiagnosticsSink& diagnostics)
        : file_(file), userZone_(std::move(userZone)), zones_(std::move(zones)), diagnostics_(diagnostics) {}

    /// Floating times are read in `floatingZone` (the user's when absent), dates in the user's zone. Times of
    /// an item of whole days become the dates that they have in its start's zone.
    ZonedTime resolve(const WrittenTime& time, const ScannedItem& item,
                      const std::optional<TimeZone>& floatingZone = {});
    ItemLength lengthOf(const ScannedItem& item, const ZonedTime& start);
    /// From a task's start to its due moment.
    ItemLength timeToDue(const ScannedItem& task, const ZonedTime& start);
    const TimeZone& userZone() const { return userZone_; }
    void report(const ScannedItem& item, std::string text);
    /// Left for finding rules of this file that yield nothing; far more than a real file takes.
    std::int64_t& stepsOfRuleChecks() { return stepsOfRuleChecks_; }

  private:
    ZonedTime resolveAsWritten(const WrittenTime& time, const ScannedItem& item,
                               const std::optional<TimeZone>& floatingZone);

    const std::filesystem::path& file_;
    TimeZone userZone_;
    ZoneLookup zones_;
    DiagnosticsSink& diagnostics_;
    /// Reports of this file so far.
    int reported_ = 0;
    std::int64_t stepsOfRuleChecks_ = 2'000'000;
};

}  // namespace platform
