#include <System/InParallel.h>

#include <algorithm>
#include <atomic>
#include <system_error>
#include <thread>
#include <vector>

namespace platform {
namespace {

/// A thread takes so many calls at once. A call reads or looks up a file: some microseconds; starting a
/// thread takes some ten.
constexpr std::size_t portion = 32;
/// More readers of one disk do not read faster.
constexpr std::size_t mostThreads = 4;

}  // namespace

void inParallel(std::size_t count, const std::function<void(std::size_t)>& work) {
    std::atomic<std::size_t> next = 0;
    const auto takePortions = [&] {
        for (std::size_t begin = 0; (begin = next.fetch_add(portion)) < count;) {
            for (std::size_t i = begin; i < std::min(begin + portion, count); ++i)
                work(i);
        }
    };
    const std::size_t processors =
        std::clamp<std::size_t>(std::thread::hardware_concurrency(), 1, mostThreads);
    const std::size_t helpers = std::min(processors - 1, count / (2 * portion));
    std::vector<std::jthread> threads;
    threads.reserve(helpers);
    try {
        while (threads.size() < helpers)
            threads.emplace_back(takePortions);
    } catch (const std::system_error&) {
        // The system allows no more threads: the ones there are do it.
    }
    takePortions();
}

}  // namespace platform
