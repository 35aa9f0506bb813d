#pragma once

#include <functional>

namespace platform {

/// The serial queue of the main thread: GLib's default main context. Work handed to it runs in order,
/// when the main thread runs its loop.
class MainQueue {
  public:
    static MainQueue& shared();

    /// Callable from any thread; returns at once.
    void async(std::function<void()> work);
    /// True on the thread that first used the queue to run, else on the process's first thread.
    bool isCurrent() const;
    /// Main thread only: runs queued work until `done` gives true or `timeoutSeconds` have passed
    /// (negative: no limit); gives done's last answer. `done` is asked after each piece of work.
    bool runUntil(const std::function<bool()>& done, double timeoutSeconds = -1);
};

}  // namespace platform
