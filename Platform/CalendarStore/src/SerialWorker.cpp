#include "SerialWorker.h"

namespace platform {

SerialWorker::~SerialWorker() {
    stop();
}

void SerialWorker::stop() {
    std::jthread thread;
    {
        std::lock_guard lock(mutex_);
        stopped_ = true;
        work_.clear();
        thread = std::move(thread_);
    }
    thread.request_stop();
}

void SerialWorker::async(std::function<void()> work) {
    std::lock_guard lock(mutex_);
    if (stopped_) return;
    work_.push_back(std::move(work));
    if (!thread_.joinable()) thread_ = std::jthread([this](std::stop_token stop) { run(std::move(stop)); });
    wake_.notify_one();
}

bool SerialWorker::isCurrent() {
    std::lock_guard lock(mutex_);
    return thread_.get_id() == std::this_thread::get_id();
}

void SerialWorker::run(std::stop_token stop) {
    std::unique_lock lock(mutex_);
    while (wake_.wait(lock, stop, [this] { return !work_.empty(); })) {
        auto work = std::move(work_.front());
        work_.pop_front();
        lock.unlock();
        work();
        work = nullptr;
        lock.lock();
    }
}

}  // namespace platform
