#pragma once

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

}  // namespace test
