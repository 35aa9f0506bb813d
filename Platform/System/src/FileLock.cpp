#include <System/FileLock.h>
#include <System/Files.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace platform {

namespace {

class LockErrors final : public std::error_category {
  public:
    const char* name() const noexcept override { return "lock"; }
    std::string message(int) const override { return "another program holds its lock"; }
};

struct SharedPatience {
    std::mutex mutex;
    FileLock::Patience patience;
};

SharedPatience& sharedPatience() {
    static auto* shared = new SharedPatience;
    return *shared;
}

FileLock::Patience currentPatience() {
    std::lock_guard guard(sharedPatience().mutex);
    return sharedPatience().patience;
}

void lockPatiently(int descriptor, const std::filesystem::path& file, std::error_code& error) {
    using Clock = std::chrono::steady_clock;
    using namespace std::chrono_literals;
    const auto patience = currentPatience();
    const auto start = Clock::now();
    auto pause = 1ms;
    bool hasReported = false;
    // The system has no wait for a file lock that ends after a time, so it is tried at growing intervals.
    while (flock(descriptor, LOCK_EX | LOCK_NB) != 0) {
        if (errno == EINTR) continue;
        if (errno != EWOULDBLOCK) {
            error = {errno, std::generic_category()};
            return;
        }
        const auto waited = Clock::now() - start;
        if (waited >= std::chrono::duration<double>(patience.seconds)) {
            error = FileLock::heldError();
            return;
        }
        if (waited >= 1s && !std::exchange(hasReported, true) && patience.onLongWait)
            patience.onLongWait(file);
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, 50ms);
    }
}

void lockUntilFree(int descriptor, std::error_code& error) {
    while (flock(descriptor, LOCK_EX) != 0) {
        if (errno == EINTR) continue;
        error = {errno, std::generic_category()};
        return;
    }
}

void lockAtOnce(int descriptor, std::error_code& error) {
    if (flock(descriptor, LOCK_EX | LOCK_NB) == 0) return;
    error = errno == EWOULDBLOCK ? FileLock::heldError() : std::error_code(errno, std::generic_category());
}

}  // namespace

void FileLock::setPatience(Patience patience) {
    std::lock_guard guard(sharedPatience().mutex);
    sharedPatience().patience = std::move(patience);
}

std::unique_ptr<FileLock> FileLock::of(const std::filesystem::path& file, std::error_code& error, Wait wait) {
    error.clear();
    if (!createDirectories(file.parent_path(), 0700, error)) return nullptr;
    auto lockFile = file;
    lockFile += ".lock";
    const int descriptor = open(lockFile.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor < 0) {
        error = {errno, std::generic_category()};
        return nullptr;
    }
    std::unique_ptr<FileLock> lock(new FileLock(descriptor));
    switch (wait) {
        case Wait::patiently:
            lockPatiently(descriptor, lockFile, error);
            break;
        case Wait::never:
            lockAtOnce(descriptor, error);
            break;
        case Wait::untilFree:
            lockUntilFree(descriptor, error);
            break;
    }
    return error ? nullptr : std::move(lock);
}

std::error_code FileLock::heldError() {
    static const LockErrors category;
    return {1, category};
}

FileLock::~FileLock() {
    close(descriptor_);
}

}  // namespace platform
