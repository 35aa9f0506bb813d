#pragma once

#include <TimeAndText/TimeZone.h>
#include <When/WhenWords.h>

#include <optional>
#include <string>
#include <string_view>

namespace hbr {

/// What the words of a typed moment say, before the clock and the zone are considered.
struct WhenReading {
    struct TimeOfDay {
        int hour = 0;
        int minute = 0;
        int second = 0;
    };

    std::string text;
    /// Year 0: no year was typed.
    std::optional<platform::LocalTime> date;
    /// 1 Sunday to 7 Saturday.
    std::optional<int> weekday;
    bool isNext = false;
    /// 0 today, 1 tomorrow.
    std::optional<int> dayOffset;
    std::optional<TimeOfDay> time;
    /// A length of time from now: days keep the time of day.
    std::optional<double> seconds;
    std::optional<int> days;
};

/// Throws WhenRefusal for a text that is not understood, names something twice or is ambiguous.
WhenReading readWhen(std::string_view text, const WhenWords& words);

}  // namespace hbr
