#pragma once

#include <TimeAndText/Calendar.h>
#include <TimeAndText/Date.h>

#include <optional>
#include <string_view>

namespace hbr {

/// A moment in one of a few fixed forms: RFC 3339; in the user's zone "2026-03-04" (its midnight),
/// "2026-03-04T09:41" or "2026-03-04T09:41:00" (also with a blank instead of the T); "now", "today",
/// "tomorrow".
std::optional<platform::Date> momentOf(std::string_view text, const platform::Calendar& calendar,
                                       platform::Date now);

}  // namespace hbr
