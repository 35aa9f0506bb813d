#pragma once

#include <memory>
#include <mutex>
#include <utility>

namespace platform {

/// A value that is replaced as a whole: readers get the old or the new one, never a mixture. A mutex around
/// a shared_ptr, because g++ 12's atomic shared_ptr is reported by the thread sanitizer.
template <class T>
class Atomic {
  public:
    Atomic() : value_(std::make_shared<const T>()) {}
    explicit Atomic(T value) : value_(std::make_shared<const T>(std::move(value))) {}

    std::shared_ptr<const T> load() const {
        std::lock_guard lock(mutex_);
        return value_;
    }
    void store(T value) {
        auto next = std::make_shared<const T>(std::move(value));
        std::lock_guard lock(mutex_);
        value_.swap(next);
    }

  private:
    mutable std::mutex mutex_;
    std::shared_ptr<const T> value_;
};

}  // namespace platform
