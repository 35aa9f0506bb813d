#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace platform {

/// A thread that does its work in order; started with the first piece. Destruction waits for the piece
/// under way and drops what has not begun.
class SerialWorker {
  public:
    SerialWorker() = default;
    ~SerialWorker();
    SerialWorker(const SerialWorker&) = delete;
    SerialWorker& operator=(const SerialWorker&) = delete;

    void async(std::function<void()> work);
    /// As destruction does; work handed over later is dropped.
    void stop();
    /// True within its work.
    bool isCurrent();

  private:
    void run(std::stop_token stop);

    std::mutex mutex_;
    std::condition_variable_any wake_;
    std::deque<std::function<void()>> work_;
    bool stopped_ = false;
    std::jthread thread_;
};

}  // namespace platform
