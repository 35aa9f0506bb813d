#include <Foundation/FileLock.h>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

FileLock::FileLock(const std::filesystem::path& file, std::error_code& error) {
    descriptor_ = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor_ < 0) {
        error = {errno, std::generic_category()};
        return;
    }
    while (flock(descriptor_, LOCK_EX) != 0) {
        if (errno == EINTR) continue;
        error = {errno, std::generic_category()};
        return;
    }
    error.clear();
}

FileLock::~FileLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace platform
