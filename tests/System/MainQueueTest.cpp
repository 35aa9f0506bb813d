#include <System/Environment.h>
#include <System/MainQueue.h>
#include <System/WallClockTimer.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

using namespace platform;

namespace {

Date wallClock() {
    auto now = std::chrono::system_clock::now().time_since_epoch();
    return Date::since1970(std::chrono::duration<double>(now).count());
}

}  // namespace

TEST(MainQueue, WorkFromManyThreadsRunsOnTheMainThreadInTheOrderOfEach) {
    auto& queue = MainQueue::shared();
    std::vector<std::pair<int, int>> seen;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&, thread] {
            EXPECT_FALSE(queue.isCurrent());
            for (int i = 0; i < 200; ++i)
                queue.async([&, thread, i] { seen.emplace_back(thread, i); });
        });
    }
    EXPECT_TRUE(queue.runUntil([&] { return seen.size() == 800; }, 20));
    EXPECT_TRUE(queue.isCurrent());
    for (auto& each : threads)
        each.join();
    std::vector<int> next(4);
    for (const auto& [thread, i] : seen)
        EXPECT_EQ(i, next[static_cast<std::size_t>(thread)]++);
}

TEST(MainQueue, StopsAfterThePieceThatWasWaitedForAndAlsoWithinOne) {
    auto& queue = MainQueue::shared();
    std::string order;
    for (char c : {'a', 'b', 'c'})
        queue.async([&order, c] { order += c; });
    EXPECT_TRUE(queue.runUntil([&] { return order == "ab"; }, 10));
    EXPECT_EQ(order, "ab");

    queue.async([&] {
        queue.async([&] { order += 'i'; });
        EXPECT_TRUE(queue.runUntil([&] { return order.back() == 'i'; }, 10));
        order += 'o';
    });
    EXPECT_TRUE(queue.runUntil([&] { return order.back() == 'o'; }, 10));
    EXPECT_EQ(order, "abcio");
    EXPECT_FALSE(queue.runUntil([] { return false; }, 0.01));
}

TEST(WallClockTimer, FiresAtItsInstantsNeverEarly) {
    const Date first = wallClock().addingTimeInterval(0.02);
    std::vector<Date> fired;
    WallClockTimer timer(first, 0.05, [&] { fired.push_back(wallClock()); });
    ASSERT_TRUE(MainQueue::shared().runUntil([&] { return fired.size() == 3; }, 10));
    for (Date each : fired)
        EXPECT_GE(each.timeIntervalSince(first), -1e-6);
    EXPECT_GE(fired[1].timeIntervalSince(fired[0]), 0.0);
    EXPECT_GE(fired[2].timeIntervalSince(first), 0.1 - 1e-6);
}

TEST(WallClockTimer, APastInstantFiresOnceAtOnceAndTheActionMayEndTheTimer) {
    int count = 0;
    std::unique_ptr<WallClockTimer> timer;
    timer = std::make_unique<WallClockTimer>(wallClock().addingTimeInterval(-1000.5), 0.001, [&] {
        ++count;
        timer.reset();
    });
    ASSERT_TRUE(MainQueue::shared().runUntil([&] { return count > 0; }, 10));
    EXPECT_FALSE(MainQueue::shared().runUntil([&] { return count > 1; }, 0.02));
}
