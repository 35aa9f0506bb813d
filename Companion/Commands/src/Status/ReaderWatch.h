#pragma once

#include <functional>
#include <memory>

namespace hbr {

/// Calls `action` once, on the main queue, when the last reader of the pipe or socket is gone; for a file
/// never. Without it, a program that writes rarely would only notice at its next write. Made and destroyed
/// on the main thread; the caller keeps `descriptor`.
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

}  // namespace hbr
