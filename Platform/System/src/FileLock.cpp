#include <System/FileLock.h>

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

std::error_code heldByAnother() {
    static const LockErrors category;
    return {1, category};
}

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

}  // namespace

void FileLock::setPatience(Patience patience) {
    std::lock_guard guard(sharedPatience().mutex);
    sharedPatience().patience = std::move(patience);
}

void FileLock::lock(int descriptor, const std::filesystem::path& file, std::error_code& error) {
    using Clock = std::chrono::steady_clock;
    using namespace std::chrono_literals;
    error.clear();
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
            error = heldByAnother();
            return;
        }
        if (waited >= 1s && !std::exchange(hasReported, true) && patience.onLongWait)
            patience.onLongWait(file);
        std::this_thread::sleep_for(pause);
        pause = std::min(pause * 2, 50ms);
    }
}

FileLock::FileLock(const std::filesystem::path& file, std::error_code& error) {
    descriptor_ = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (descriptor_ < 0) {
        error = {errno, std::generic_category()};
        return;
    }
    lock(descriptor_, file, error);
}

FileLock::~FileLock() {
    if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace platform
