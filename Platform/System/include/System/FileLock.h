#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <system_error>

namespace platform {

/// Holds `flock` on a file of its own, which is never replaced, while it lives.
class FileLock {
  public:
    /// How this process waits for a lock that another one holds.
    struct Patience {
        /// After so many seconds the lock fails, with `heldError`. 0 tries once.
        double seconds = 10;
        /// Called once a wait, after one second, with the locked file; from the waiting thread.
        std::function<void(const std::filesystem::path&)> onLongWait = {};
    };
    /// For all locks from now on; set by a program's start. Any thread.
    static void setPatience(Patience patience);

    enum class Wait {
        /// With the process's patience.
        patiently,
        /// Not at all.
        never,
        /// As long as it takes. Not for a thread that somebody waits for.
        untilFree
    };
    /// Locks the file named `file` and ".lock", which is created where it is missing, with its folder (mode
    /// 0700). Nothing when it could not be locked.
    static std::unique_ptr<FileLock> of(const std::filesystem::path& file, std::error_code& error,
                                        Wait wait = Wait::patiently);
    /// The error of a lock that another one holds.
    static std::error_code heldError();
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

  private:
    explicit FileLock(int descriptor) : descriptor_(descriptor) {}

    int descriptor_ = -1;
};

}  // namespace platform
