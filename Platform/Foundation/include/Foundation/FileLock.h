#pragma once

#include <filesystem>
#include <system_error>

namespace platform {

/// Holds `flock` on a file of its own, which is never replaced, while it lives.
class FileLock {
  public:
    FileLock(const std::filesystem::path& file, std::error_code& error);
    ~FileLock();
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

  private:
    int descriptor_ = -1;
};

}  // namespace platform
