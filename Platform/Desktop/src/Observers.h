#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace platform {

/// Callbacks to notify. A token ends its own observation; it may outlive the list.
class Observers {
  public:
    [[nodiscard]] std::shared_ptr<void> add(std::function<void()> changed) {
        auto token = std::make_shared<std::function<void()>>(std::move(changed));
        observers_.push_back(token);
        return token;
    }

    void notify() {
        std::erase_if(observers_, [](const auto& observer) { return observer.expired(); });
        // A copy: an observer may add others or take itself away.
        for (const auto& observer : std::vector(observers_)) {
            if (const auto changed = observer.lock()) (*changed)();
        }
    }

  private:
    std::vector<std::weak_ptr<std::function<void()>>> observers_;
};

}  // namespace platform
