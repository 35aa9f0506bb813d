#pragma once

#include <functional>
#include <memory>

namespace platform {

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
