#pragma once

#include <filesystem>
#include <functional>
#include <system_error>

namespace platform {

/// Holds `flock` on a file of its own, which is never replaced, while it lives.
class FileLock {
  public:
    /// How this process waits for a lock that another one holds.
    struct Patience {
        /// After so many seconds the lock fails, with an error whose message says that another program holds
        /// it. 0 tries once.
        double seconds = 10;
        /// Called once a wait, after one second, with the locked file; from the waiting thread.
        std::function<void(const std::filesystem::path&)> onLongWait = {};
    };
    /// For all locks from now on; set by a program's start. Any thread.
    static void setPatience(Patience patience);

    FileLock(const std::filesystem::path& file, std::error_code& error);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    /// Locks an open file with the process's patience. The lock ends when the descriptor is closed.
    static void lock(int descriptor, const std::filesystem::path& file, std::error_code& error);

  private:
    int descriptor_ = -1;
};

}  // namespace platform
