#pragma once

#include <glib-unix.h>
#include <sys/timerfd.h>

#include <optional>

#include "FileDescriptor.h"

namespace platform {

/// A timer of the wall clock on the main queue, which also notices when the clock is set. Main thread.
class TimerSource {
  public:
    /// `ready` is called on the main queue with `data` when the timer falls due or the clock was set; it
    /// calls `takeEvent`. Throws std::system_error.
    TimerSource(GUnixFDSourceFunc ready, gpointer data);
    ~TimerSource();
    TimerSource(const TimerSource&) = delete;
    TimerSource& operator=(const TimerSource&) = delete;

    /// In place of the moment set before.
    void set(const timespec& moment);
    enum class Event { due, clockSet };
    /// Why `ready` was called; nothing when there was no cause.
    std::optional<Event> takeEvent();
    /// `ready` is not called again.
    void stop();

  private:
    FileDescriptor timer_;
    GSource* source_;
};

}  // namespace platform
