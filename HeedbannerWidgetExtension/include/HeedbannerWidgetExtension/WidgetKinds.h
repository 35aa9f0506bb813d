#pragma once

#include <string_view>

namespace hbr::widgetKind {

inline constexpr std::string_view nextEventCountdown = "com.quietlark.hbr.NextEventCountdownWidget";
inline constexpr std::string_view upcomingEvents = "com.quietlark.hbr.UpcomingEventsWidget";
inline constexpr std::string_view currentEvents = "com.quietlark.hbr.CurrentEventsWidget";

}  // namespace hbr::widgetKind
