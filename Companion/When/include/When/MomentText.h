#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>

#include <optional>
#include <string_view>

namespace hbr {

/// A moment as a person types it: RFC 3339, or in the user's zone "2026-03-04" (its midnight),
/// "2026-03-04T09:41", "2026-03-04T09:41:00" (a blank may stand for the T), or "now", "today", "tomorrow".
std::optional<platform::Date> momentOf(std::string_view text, const platform::Calendar& calendar,
                                       platform::Date now);

}  // namespace hbr
