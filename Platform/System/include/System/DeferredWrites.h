#pragma once

#include <functional>

namespace platform {

/// Whether this process defers its changes to locked files: a program whose main thread draws must not wait
/// until another process releases a lock. Off at first. Any thread.
class DeferredWrites {
  public:
    static void setOn(bool isOn);
    static bool areOn();

    /// Runs `write` on a thread of its own, which may wait for a lock. `giveUp` makes what `write` has not
    /// yet begun void, and reports it.
    static void run(std::function<void()> write, std::function<void()> giveUp);
    /// To be called before the process ends: waits for what is deferred, at most so many seconds, and gives
    /// up the rest.
    static void finish(double seconds = 3);
};

}  // namespace platform
