#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Calls `changed` on the main queue after the wall clock was set or the machine woke up from suspend. Wakes
/// nothing otherwise. Made and destroyed on the main thread.
class ClockChange {
  public:
    explicit ClockChange(std::function<void()> changed);
    ~ClockChange();
    ClockChange(const ClockChange&) = delete;
    ClockChange& operator=(const ClockChange&) = delete;

  private:
    struct Source;
    std::unique_ptr<Source> source_;
};

}  // namespace platform
