#include <System/DeferredWrites.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <list>
#include <mutex>
#include <thread>
#include <utility>

namespace platform {

namespace {

struct SharedState {
    std::atomic<bool> isOn = false;
    std::mutex mutex;
    std::condition_variable ended;
    /// Of the writes under way.
    std::list<std::function<void()>> giveUps;
};

/// Never destroyed: a thread may still wait for a lock when the process ends.
SharedState& shared() {
    static auto* state = new SharedState;
    return *state;
}

}  // namespace

void DeferredWrites::setOn(bool isOn) {
    shared().isOn = isOn;
}

bool DeferredWrites::areOn() {
    return shared().isOn;
}

void DeferredWrites::run(std::function<void()> write, std::function<void()> giveUp) {
    SharedState& state = shared();
    std::lock_guard guard(state.mutex);
    const auto place = state.giveUps.insert(state.giveUps.end(), std::move(giveUp));
    // Detached: the system's wait for a file lock cannot be ended from outside.
    std::thread([&state, place, write = std::move(write)]() mutable {
        write();
        write = nullptr;
        std::list<std::function<void()>> mine;
        std::lock_guard ending(state.mutex);
        mine.splice(mine.end(), state.giveUps, place);
        state.ended.notify_all();
    }).detach();
}

void DeferredWrites::finish(double seconds) {
    SharedState& state = shared();
    std::unique_lock lock(state.mutex);
    state.ended.wait_for(lock, std::chrono::duration<double>(seconds),
                         [&state] { return state.giveUps.empty(); });
    const auto left = state.giveUps;
    lock.unlock();
    for (const auto& giveUp : left)
        giveUp();
}

}  // namespace platform
