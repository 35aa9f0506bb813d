#include <System/NotificationCenter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <future>
#include <thread>

using namespace platform;

TEST(NotificationCenter, ObserversRunInTheOrderOfTheirRegistrationAndMayChangeTheList) {
    NotificationCenter centre;
    std::string calls;
    NotificationCenter::Observation late;
    auto first = centre.observe("A", [&] {
        calls += '1';
        late = centre.observe("A", [&] { calls += 'L'; });
    });
    NotificationCenter::Observation second;
    second = centre.observe("A", [&] {
        calls += '2';
        second.cancel();
    });
    auto other = centre.observe("B", [&] { calls += 'B'; });
    centre.post("A");
    EXPECT_EQ(calls, "12");
    first.cancel();
    centre.post("A");
    EXPECT_EQ(calls, "12L");
}

TEST(NotificationCenter, DestructionWaitsForADeliveryOnAnotherThread) {
    NotificationCenter centre;
    std::promise<void> entered;
    std::promise<void> release;
    std::atomic<bool> isDelivered = false;
    auto observation = std::make_unique<NotificationCenter::Observation>(centre.observe("A", [&] {
        entered.set_value();
        release.get_future().wait();
        isDelivered = true;
    }));
    std::thread poster([&] { centre.post("A"); });
    entered.get_future().wait();
    std::atomic<bool> isDestroyed = false;
    std::thread destroyer([&] {
        observation.reset();
        EXPECT_TRUE(isDelivered);
        isDestroyed = true;
    });
    EXPECT_FALSE(isDestroyed);
    release.set_value();
    destroyer.join();
    poster.join();
}

TEST(NotificationCenter, NothingIsDeliveredAfterDestructionHoweverManyThreadsPost) {
    NotificationCenter centre;
    std::atomic<bool> isOver = false;
    std::vector<std::thread> posters;
    for (int i = 0; i < 3; ++i) {
        posters.emplace_back([&] {
            while (!isOver)
                centre.post("A");
        });
    }
    for (int round = 0; round < 100; ++round) {
        auto isAlive = std::make_unique<std::atomic<bool>>(true);
        auto observation = centre.observe("A", [alive = isAlive.get()] { EXPECT_TRUE(*alive); });
        std::this_thread::yield();
        observation.cancel();
        *isAlive = false;
    }
    isOver = true;
    for (auto& each : posters)
        each.join();
}

TEST(NotificationCenter, AnObservationMayOutliveItsCentre) {
    auto centre = std::make_unique<NotificationCenter>();
    auto observation = centre->observe("A", [] {});
    centre.reset();
    observation.cancel();
}
