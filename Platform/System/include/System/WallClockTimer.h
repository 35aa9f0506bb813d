#pragma once

#include <TimeAndText/Date.h>

#include <functional>
#include <memory>

namespace platform {

/// Fires on the main queue at `first` and then every `interval` seconds of the wall clock; follows clock
/// changes, never early. Ends when destroyed (on the main thread).
class WallClockTimer {
  public:
    WallClockTimer(Date first, double interval, std::function<void()> action);
    ~WallClockTimer();
    WallClockTimer(const WallClockTimer&) = delete;
    WallClockTimer& operator=(const WallClockTimer&) = delete;

  private:
    struct Source;
    std::unique_ptr<Source> source_;
};

}  // namespace platform
