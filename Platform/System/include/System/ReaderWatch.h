#pragma once

#include <functional>
#include <memory>

namespace platform {

/// Calls `action` once, on the main queue, when nobody reads any more what is written to the pipe or socket;
/// for a file never. Without it a program that writes seldom would outlive its reader until the next write.
/// Made and destroyed on the main thread; `descriptor` stays the caller's.
class ReaderWatch {
  public:
    ReaderWatch(int descriptor, std::function<void()> action);
    ~ReaderWatch();
    ReaderWatch(const ReaderWatch&) = delete;
    ReaderWatch& operator=(const ReaderWatch&) = delete;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
