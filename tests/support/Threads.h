#pragma once

#include <chrono>
#include <functional>
#include <thread>
#include <vector>

namespace test {

/// Runs `work` with 0, 1 … `count` - 1, each on a thread of its own, and waits for all of them.
template <class Work>
void onThreads(int count, const Work& work) {
    std::vector<std::jthread> threads;
    for (int i = 0; i < count; ++i)
        threads.emplace_back([&work, i] { work(i); });
}

/// False when the condition did not come true within 20 seconds.
inline bool eventually(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
}

}  // namespace test
