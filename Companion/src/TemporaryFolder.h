#pragma once

#include <filesystem>

namespace hbr {

/// A new folder for this user only, gone with its content afterwards. Throws CommandFailure when it cannot
/// be made.
class TemporaryFolder {
  public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::filesystem::path& path() const { return path_; }

  private:
    std::filesystem::path path_;
};

}  // namespace hbr
