#pragma once

#include "WrittenTime.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// An RRULE in its parts, each checked for its range. Lists are sorted and without repeats.
struct RecurrenceRule {
    enum class Frequency { secondly, minutely, hourly, daily, weekly, monthly, yearly };
    struct Weekday {
        /// nth of the month or year, from its end when negative, 0: every.
        int position = 0;
        /// 0 Sunday to 6 Saturday.
        int day = 0;
    };

    Frequency frequency = Frequency::daily;
    int interval = 1;
    std::optional<int> count;
    std::optional<WrittenTime> until;
    std::vector<int> seconds;
    std::vector<int> minutes;
    std::vector<int> hours;
    std::vector<Weekday> weekdays;
    std::vector<int> monthDays;
    std::vector<int> yearDays;
    std::vector<int> weekNumbers;
    std::vector<int> months;
    std::vector<int> setPositions;
    int weekStart = 1;

    /// On failure nothing, with the reason in `problem`.
    static std::optional<RecurrenceRule> parse(std::string_view text, std::string& problem);
};

}  // namespace platform
