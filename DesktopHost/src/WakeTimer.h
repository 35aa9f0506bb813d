#pragma once

#include <System/WallClockTimer.h>

#include <functional>
#include <optional>
#include <utility>

namespace hbr {

/// A moment of the wall clock at which to do something, moved as often as one likes. Main thread.
class WakeTimer {
  public:
    explicit WakeTimer(std::function<void()> action) : action_(std::move(action)) {}

    void set(std::optional<platform::Date> moment) {
        timer_.reset();
        if (moment) timer_.emplace(*moment, 0, action_);
    }

  private:
    std::function<void()> action_;
    std::optional<platform::WallClockTimer> timer_;
};

}  // namespace hbr
