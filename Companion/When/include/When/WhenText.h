#pragma once

#include <System/Environment.h>
#include <TimeAndText/Date.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace hbr {

/// Why a text does not name a future moment, and what to type instead.
class WhenRefusal : public std::runtime_error {
  public:
    /// `understood`: the words are known, but the moment is ambiguous, in the past or does not exist.
    WhenRefusal(const std::string& text, bool understood)
        : std::runtime_error(text), isUnderstood(understood) {}

    bool isUnderstood;
};

/// A future moment as people type it, in the zone and relative to the clock of the environment: "tomorrow
/// 9:00", "fri 2:30pm", "morgen um 9 Uhr", "2026-12-01 08:00", "1.12. 8:00", "1 dec 8am", "in 1h30", RFC 3339
/// with an offset. Understands the words of every shipped language, those of the user's language first. A
/// weekday is the next one. Throws WhenRefusal for a moment that is ambiguous ("12/1/2026", a time that
/// exists twice on the day the clocks go back), does not exist, is in the past or has no time of day.
platform::Date whenOf(std::string_view text, const platform::Environment& environment);

/// Now plus a length of time: "20m", "1h30", "2 hours", "3 days" (days keep the time of day). Throws
/// WhenRefusal.
platform::Date afterLength(std::string_view text, const platform::Environment& environment);

/// "2026-12-01 08:00" in the calendar's zone, a form that `whenOf` reads.
std::string typedMoment(platform::Date moment, const platform::Calendar& calendar);

}  // namespace hbr
