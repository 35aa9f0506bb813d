#pragma once

#include <HbrCore/CoreServices.h>
#include <System/WakeSchedule.h>

#include <memory>

namespace hbr {

/// Reloads the events at the moments that the manager's own timer, which is set for whole minutes, leaves
/// out: when an event enters or leaves a list within a minute, and at the first whole minute. Main thread.
class ListReloads {
  public:
    ListReloads(CoreServices& core, platform::WakeSchedule& wakes);

    /// After each reload.
    void awaitNextChange();

  private:
    CoreServices& core_;
    std::unique_ptr<platform::WakeSchedule::Alarm> nextChange_;
    std::unique_ptr<platform::WakeSchedule::Alarm> firstMinute_;
};

}  // namespace hbr
