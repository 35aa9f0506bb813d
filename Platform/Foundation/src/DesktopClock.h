#pragma once

#include <optional>
#include <string_view>

namespace platform {

enum class HourCycle { twelve, twentyFour };

/// The clock that the user chose in the settings of a desktop of GNOME's family (`desktops` is the value of
/// XDG_CURRENT_DESKTOP); nothing elsewhere, or while the desktop's own default holds. It takes about 3 ms
/// where there is such a desktop, nothing elsewhere.
std::optional<HourCycle> desktopHourCycle(std::string_view desktops);

}  // namespace platform
