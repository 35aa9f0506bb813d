#pragma once

#include <System/MainQueue.h>

#include <functional>
#include <memory>
#include <utility>

namespace hbr {

/// Calls that an object makes later on the main queue, where it may be gone by then: they are dropped
/// together with this, its member. Destroyed on the main thread.
class MainQueueCalls {
  public:
    MainQueueCalls() = default;
    MainQueueCalls(const MainQueueCalls&) = delete;
    MainQueueCalls& operator=(const MainQueueCalls&) = delete;

    /// Safe from any thread while this exists.
    void later(std::function<void()> work) const {
        platform::MainQueue::shared().async(guarded(std::move(work)));
    }

    /// `work`, which does nothing once this is gone. To be called on the main thread.
    std::function<void()> guarded(std::function<void()> work) const {
        return [alive = std::weak_ptr(isAlive_), work = std::move(work)] {
            if (alive.lock()) work();
        };
    }

  private:
    std::shared_ptr<const bool> isAlive_ = std::make_shared<const bool>(true);
};

}  // namespace hbr
