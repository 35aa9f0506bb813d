#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string_view>

namespace platform {

enum class HourCycle { twelve, twentyFour };

/// The clock that the user chose in the settings of a desktop of GNOME's family (`desktops` is the value of
/// XDG_CURRENT_DESKTOP); nothing elsewhere, or while the desktop's own default holds. It takes about 3 ms
/// where there is such a desktop, nothing elsewhere.
std::optional<HourCycle> desktopHourCycle(std::string_view desktops);

/// Calls `changed` when the user chose another clock, 12 or 24 hours, in the settings of a desktop of GNOME's
/// family; says nothing elsewhere. A running process keeps the environment variables that decide about the
/// rest of its locale. Main thread.
class ClockFormatChange {
  public:
    explicit ClockFormatChange(std::function<void()> changed);
    ~ClockFormatChange();
    ClockFormatChange(const ClockFormatChange&) = delete;
    ClockFormatChange& operator=(const ClockFormatChange&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
