#include <HbrCore/CoreFixture.h>
#include <System/MainQueue.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using test::titles;

constexpr int rounds = 30;

std::string edition(int i) {
    return meeting("Edition " + std::to_string(i), "20260304T" + std::to_string(10 + i % 10) + "0000Z") +
           "BEGIN:VTODO\nUID:t\nSUMMARY:Task " + std::to_string(i) + "\nDUE:20260304T090030Z\nEND:VTODO\n";
}

/// Does its work `rounds` times on threads of its own, while the main queue runs.
class Crowd {
  public:
    void add(std::function<void(int round)> work) {
        threads_.emplace_back([this, work = std::move(work)] {
            for (int i = 0; i < rounds; ++i)
                work(i);
            platform::MainQueue::shared().async([this] { ++finished_; });
        });
    }
    bool isFinished() const { return finished_ == threads_.size(); }

  private:
    std::size_t finished_ = 0;
    std::vector<std::jthread> threads_;
};

TEST(CalendarEventManager, ReloadsSnoozesSettingsFilesAndReadersAtOnce) {
    test::CoreFixture core("2026-03-04T08:57:30Z");
    core.write("calendars/fixed/a.ics", meeting("Fixed", "20260304T090000Z"));
    core.write("calendars/other/b.ics", edition(0));
    core.services().reminders().addReminder({"own", at("2026-03-04T12:00:00Z"), "Own", std::nullopt, 0});
    auto& manager = core.reloaded();
    auto& store = core.services().aggregatedEventStore();
    store.startWatching();
    const Event fixed = manager.scheduledEvents().at(0);
    const Event own = *manager.cachedEvent("own");
    const auto other = manager.fetchCalendars().at(1);
    ASSERT_EQ(other.name, "other");

    std::atomic<int> wrong = 0;
    std::size_t answered = 0;
    {
        Crowd crowd;
        // Scheduled or pending as clock and lead change, but always one of them.
        crowd.add([&](int) {
            for (int i = 0; i < 20; ++i) {
                if (std::ranges::count(titles(manager.allCachedUpcomingEvents()), "Fixed") != 1) ++wrong;
                if (titles(manager.allCachedCurrentEvents()).size() > 1) ++wrong;
            }
        });
        for (int thread = 0; thread < 2; ++thread) {
            crowd.add([&](int) {
                manager.snooze(own, 1);
                manager.snoozeUntilTimeOfEvent(fixed);
                manager.snooze(fixed, 5);
                manager.removeSnooze(fixed);
                for (const auto& alert : manager.invocations())
                    manager.didHandleAlertInvocation(alert);
            });
        }
        crowd.add([&](int i) {
            core.services().settings().setTimeOffsetSeconds(i % 2 == 0 ? 300 : 60);
            core.environment.setNow(i % 3 == 0 ? "2026-03-04T08:59:30Z" : "2026-03-04T08:57:30Z");
            i % 2 == 0 ? manager.deactivateCalendar(other.identifier)
                       : manager.activateCalendar(other.identifier);
        });
        crowd.add([&](int i) {
            core.write("calendars/other/b.ics", edition(i));
            if (i % 2 == 0) store.refreshData();
        });
        for (int thread = 0; thread < 2; ++thread) {
            crowd.add([&](int) {
                manager.reloadEvents(false, [&] {
                    if (!platform::MainQueue::shared().isCurrent()) ++wrong;
                    ++answered;
                });
            });
        }
        ASSERT_TRUE(platform::MainQueue::shared().runUntil(
            [&] { return crowd.isFinished() && answered == 2 * rounds; }, 60));
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(core.services().reminders().reminder("own")->date(), at("2026-03-04T13:00:00Z"));

    core.environment.setNow("2026-03-04T08:57:30Z");
    store.refreshData();
    reloadAndWait(core.services());
    CoreServices fresh(core.environment, {});
    reloadAndWait(fresh);
    EXPECT_EQ(manager.allCachedUpcomingEvents(), fresh.manager().allCachedUpcomingEvents());
    EXPECT_EQ(manager.invocations(), fresh.manager().invocations());
    EXPECT_EQ(titles(manager.pendingEvents()).size() + titles(manager.scheduledEvents()).size(), 4u);
}

TEST(CalendarEventManager, MayEndWhileAChangeIsReportedOnAnotherThread) {
    test::CoreFixture core;
    for (int i = 0; i < 6; ++i) {
        CoreServices services(core.environment, {});
        services.manager().activateAllCalendars();
        reloadAndWait(services);
        core.write("calendars/a.ics", edition(i));
        services.aggregatedEventStore().refreshData();
        if (i % 2 == 0) services.manager().reloadEvents(true);
    }
    bool isDrained = false;
    platform::MainQueue::shared().async([&] { isDrained = true; });
    EXPECT_TRUE(platform::MainQueue::shared().runUntil([&] { return isDrained; }, 20));
}

}  // namespace
