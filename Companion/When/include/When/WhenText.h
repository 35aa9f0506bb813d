#pragma once

#include <System/Environment.h>
#include <TimeAndText/Date.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace hbr {

/// Why a text names no moment to come: says what to type instead.
class WhenRefusal : public std::runtime_error {
  public:
    /// `understood`: the words are clear, what they mean is ambiguous, past or does not exist.
    WhenRefusal(const std::string& text, bool understood)
        : std::runtime_error(text), isUnderstood(understood) {}

    bool isUnderstood;
};

/// A moment to come as people type it, in the environment's zone and seen from its clock: "tomorrow 9:00",
/// "fri 2:30pm", "morgen um 9 Uhr", "2026-12-01 08:00", "1.12. 8:00", "1 dec 8am", "in 1h30", RFC 3339 with
/// an offset. Words of every shipped language count, those of the user's language first. A weekday is the
/// next one. Throws WhenRefusal for what is ambiguous ("12/1/2026", a time that comes twice on the day the
/// clocks go back), does not exist, lies in the past or lacks its time of day.
platform::Date whenOf(std::string_view text, const platform::Environment& environment);

/// The end of a length of time that begins now: "20m", "1h30", "2 hours", "3 days" (which keep the time of
/// day). Throws WhenRefusal.
platform::Date afterLength(std::string_view text, const platform::Environment& environment);

/// "2026-12-01 08:00" in the environment's zone: a form that `whenOf` reads back.
std::string typedMoment(platform::Date moment, const platform::Calendar& calendar);

}  // namespace hbr
