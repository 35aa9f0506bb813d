#pragma once

#include <atomic>
#include <cstdint>

namespace platform {

struct WorkCounters {
    std::atomic<std::uint64_t> shapedTexts{0};
    std::atomic<std::uint64_t> rasterizedPictures{0};
};

WorkCounters& workCounters();

inline void count(std::atomic<std::uint64_t>& counter) {
    counter.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace platform
