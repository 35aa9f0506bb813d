#pragma once

#include <HbrUtils/DefaultsDomains.h>

#include <functional>
#include <memory>
#include <vector>

namespace hbr {

/// Calls `changed` on the main queue, once for writes that come together, after any program wrote a setting,
/// an own reminder or what was chosen for an event. Main thread.
class SettingsWatch {
  public:
    SettingsWatch(const DefaultsDomains& domains, std::function<void()> changed);
    ~SettingsWatch();

  private:
    struct State;
    std::shared_ptr<State> state_;
    std::vector<std::shared_ptr<void>> observations_;
};

}  // namespace hbr
