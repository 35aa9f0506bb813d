#include <System/MainQueue.h>

#include <glib.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <deque>
#include <mutex>

namespace platform {
namespace {

/// What the queue and the loop that runs it share. The work lies in a queue of our own, one source of the
/// main context for each piece: so pieces keep their order and nested loops go on with the next piece.
struct Pending {
    std::mutex mutex;
    std::deque<std::function<void()>> work;
    std::atomic<pid_t> runner = 0;
    /// Asked after each piece; main thread only. Nothing outside runUntil.
    const std::function<bool()>* done = nullptr;
    bool isDone = false;
};

Pending& pending() {
    static auto* instance = new Pending;
    return *instance;
}

gboolean runNext(gpointer) noexcept {
    Pending& queue = pending();
    // The loop that waits has what it wants; the rest runs in the next loop.
    if (queue.isDone) return G_SOURCE_CONTINUE;
    queue.runner = gettid();
    std::function<void()> work;
    {
        std::lock_guard lock(queue.mutex);
        work = std::move(queue.work.front());
        queue.work.pop_front();
    }
    work();
    work = nullptr;
    if (queue.done && (*queue.done)()) queue.isDone = true;
    return G_SOURCE_REMOVE;
}

/// Wakes the main context once, at a deadline.
class Deadline {
  public:
    explicit Deadline(double seconds) {
        if (seconds < 0) return;
        at_ = Clock::now() +
              std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(seconds));
        source_ = g_timeout_source_new(static_cast<guint>(std::ceil(std::min(seconds, 1e6) * 1000)));
        g_source_set_callback(
            source_, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr, nullptr);
        g_source_attach(source_, nullptr);
    }
    ~Deadline() {
        if (!source_) return;
        g_source_destroy(source_);
        g_source_unref(source_);
    }
    Deadline(const Deadline&) = delete;
    Deadline& operator=(const Deadline&) = delete;

    bool hasPassed() const { return source_ && Clock::now() >= at_; }

  private:
    using Clock = std::chrono::steady_clock;
    Clock::time_point at_;
    GSource* source_ = nullptr;
};

/// Puts the outer loop's question back, so that a piece of work may run a loop of its own.
class Question {
  public:
    explicit Question(const std::function<bool()>& done) : outer_(pending().done) {
        pending().done = &done;
        pending().isDone = false;
    }
    ~Question() {
        pending().done = outer_;
        pending().isDone = false;
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    bool isAnswered(const std::function<bool()>& done) const { return pending().isDone || done(); }

  private:
    const std::function<bool()>* outer_;
};

}  // namespace

MainQueue& MainQueue::shared() {
    static MainQueue queue;
    return queue;
}

void MainQueue::async(std::function<void()> work) {
    Pending& queue = pending();
    // Attached under the lock: the order of the sources is the order of the work.
    std::lock_guard lock(queue.mutex);
    queue.work.push_back(std::move(work));
    GSource* source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(source, runNext, nullptr, nullptr);
    g_source_attach(source, nullptr);
    g_source_unref(source);
}

bool MainQueue::isCurrent() const {
    pid_t runner = pending().runner;
    return gettid() == (runner != 0 ? runner : getpid());
}

bool MainQueue::runUntil(const std::function<bool()>& done, double timeoutSeconds) {
    pending().runner = gettid();
    Question question(done);
    Deadline deadline(timeoutSeconds);
    while (!question.isAnswered(done)) {
        if (deadline.hasPassed()) {
            g_main_context_iteration(nullptr, FALSE);
            return question.isAnswered(done);
        }
        g_main_context_iteration(nullptr, TRUE);
    }
    return true;
}

}  // namespace platform
