#pragma once

#include <System/Environment.h>

#include <functional>
#include <memory>

namespace platform {

/// Calls `changed` on the main queue when the system's time zone is no longer the one that `environment` has,
/// or its rules were replaced. Says nothing while the variable TZ names the zone, unless it names a file.
/// Main thread.
class ZoneChange {
  public:
    ZoneChange(const Environment& environment, std::function<void()> changed);
    ~ZoneChange();
    ZoneChange(const ZoneChange&) = delete;
    ZoneChange& operator=(const ZoneChange&) = delete;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace platform
