#pragma once

#include "WrittenTime.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// One value of an RDATE: a start, with PERIOD an end or a length of its own.
struct WrittenPeriod {
    WrittenTime start;
    std::optional<WrittenTime> end;
    std::optional<WrittenDuration> duration;
};

/// What makes an item recur; only recurring items pay for it.
struct WrittenRecurrence {
    std::vector<std::string> rules;
    std::vector<std::string> exclusionRules;
    std::vector<WrittenPeriod> dates;
    std::vector<WrittenTime> exclusions;
};

/// A VEVENT or VTODO after the scan: its times and rules, and its other lines as text for later.
struct ScannedItem {
    enum class Kind { event, task };

    Kind kind = Kind::event;
    /// Line of its BEGIN.
    int line = 0;
    std::string uid;
    int sequence = 0;
    /// LAST-MODIFIED, else DTSTAMP, as written: "20260304T094100Z" sorts by time.
    std::string modified;
    std::optional<WrittenTime> start;
    /// DTEND of an event, DUE of a task.
    std::optional<WrittenTime> end;
    std::optional<WrittenDuration> duration;
    std::optional<WrittenTime> recurrenceId;
    bool thisAndFuture = false;
    /// The file is a cancellation (METHOD:CANCEL).
    bool cancelled = false;
    /// From one written midnight to another and marked as all-day (X-MICROSOFT-CDO-ALLDAYEVENT): its times
    /// mean days of the zone that they are written in.
    bool wholeDays = false;
    /// STATUS, COMPLETED or PERCENT-COMPLETE say that a task is done.
    bool completed = false;
    std::unique_ptr<WrittenRecurrence> recurrence;
    /// "BEGIN:VEVENT … END:VEVENT", unfolded, UTF-8, with only the lines that a record is made of.
    std::string text;
};

}  // namespace platform
