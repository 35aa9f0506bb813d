#include <HbrCore/CoreFixture.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <HeedbannerWidgetExtension/TimelineProviders.h>
#include <HeedbannerWidgetExtension/WidgetKinds.h>
#include <System/MainQueue.h>
#include <WidgetHost/WidgetCenter.h>
#include <gmock/gmock.h>

namespace {

using namespace hbr;
using test::at;
using testing::ElementsAre;

/// Providers over a fixed list, ten minutes apart from 10:00 on; a reload completes at once.
EventSource listed(const test::TestEnvironment& environment, int count, int* reloads = nullptr) {
    EventRefs events;
    for (int i = 0; i < count; ++i) {
        Event event;
        event.id = std::to_string(i);
        event.startDate = at("2026-03-04T10:00:00Z").addingTimeInterval(600.0 * i);
        events.push_back(std::make_shared<const Event>(event));
    }
    return {environment, [events] { return events; }, [events] { return events; },
            [reloads](const std::function<void()>& completion) {
                if (reloads) ++*reloads;
                completion();
            }};
}

template <class Provider>
auto timelineOf(const Provider& provider) {
    platform::Timeline<typename Provider::Entry> result;
    provider.getTimeline({}, [&](auto timeline) { result = std::move(timeline); });
    return result;
}

TEST(NextEventProvider, CountsDownToThreeEventsEachFromTheStartOfTheOneBefore) {
    test::TestEnvironment environment("2026-03-04T09:00:00Z");
    struct Case {
        int events;
        std::vector<std::string> dates;
        const char* after;
    };
    const Case cases[] = {{0, {}, "2026-03-04T09:01:00Z"},
                          {1, {"09:00"}, "2026-03-04T10:01:00Z"},
                          {5, {"09:00", "10:00", "10:10"}, "2026-03-04T10:21:00Z"}};
    for (const Case& c : cases) {
        int reloads = 0;
        const auto timeline = timelineOf(NextEventProvider(listed(environment, c.events, &reloads)));
        std::vector<std::string> dates;
        for (std::size_t i = 0; i < timeline.entries.size(); ++i) {
            dates.push_back(platform::formatRfc3339(timeline.entries[i].date).substr(11, 5));
            EXPECT_EQ(timeline.entries[i].event->id, std::to_string(i));
        }
        EXPECT_EQ(dates, c.dates);
        EXPECT_EQ(timeline.policy.date, at(c.after));
        EXPECT_EQ(reloads, 1);
    }
}

TEST(ListProviders, GiveOneEntryForAMinute) {
    test::TestEnvironment environment("2026-03-04T09:00:00Z");
    const auto upcoming = timelineOf(UpcomingEvetsProvider(listed(environment, 10)));
    const auto current = timelineOf(CurrentEvetsProvider(listed(environment, 10)));
    ASSERT_EQ(upcoming.entries.size(), 1u);
    EXPECT_EQ(upcoming.entries[0].events.size(), 6u);
    EXPECT_EQ(current.entries.at(0).events.size(), 10u);
    for (const auto& policy : {upcoming.policy, current.policy})
        EXPECT_EQ(policy.date, at("2026-03-04T09:01:00Z"));
    EXPECT_TRUE(timelineOf(UpcomingEvetsProvider(listed(environment, 0))).entries.at(0).events.empty());
}

TEST(Providers, SnapshotsAndPlaceholdersDoNotReload) {
    test::TestEnvironment environment;
    int reloads = 0;
    const auto source = listed(environment, 7, &reloads);
    NextEventProvider(source).getSnapshot(
        {}, [](const NextEventEntry& entry) { EXPECT_EQ(entry.event->id, "0"); });
    UpcomingEvetsProvider(source).getSnapshot(
        {}, [](const UpcomingEventsEntry& e) { EXPECT_EQ(e.events.size(), 6u); });
    CurrentEvetsProvider(source).getSnapshot(
        {}, [](const CurrentEventsEntry& e) { EXPECT_EQ(e.events.size(), 7u); });
    EXPECT_FALSE(NextEventProvider(source).placeholder({}).event);
    EXPECT_TRUE(UpcomingEvetsProvider(source).placeholder({}).events.empty());
    EXPECT_EQ(reloads, 0);
}

TEST(Providers, RequestsBesideEachOtherAreAllAnsweredAndAnnounceNothing) {
    test::CoreFixture core;
    core.write("calendars/a.ics",
               test::meeting("Running", "20260304T083000Z") + test::meeting("Later", "20260304T120000Z"));
    auto& manager = core.reloaded();
    int announced = 0;
    const auto observation =
        core.services().center().observe(didReloadEventsNotification, [&] { ++announced; });
    int reloads = 0;
    const EventSource source{core.environment, [&] { return manager.lists()->upcoming(); },
                             [&] { return manager.lists()->underWay(); },
                             [&](std::function<void()> completion) {
                                 ++reloads;
                                 manager.reloadEvents(false, std::move(completion));
                             }};
    const NextEventProvider next(source);
    const UpcomingEvetsProvider upcoming(source);
    const CurrentEvetsProvider current(source);
    std::vector<std::string> answers;
    const auto answer = [&](const Event& event) {
        EXPECT_TRUE(platform::MainQueue::shared().isCurrent());
        answers.push_back(*event.title);
    };
    for (int i = 0; i < 2; ++i) {
        next.getTimeline({}, [&](const auto& timeline) { answer(*timeline.entries.at(0).event); });
        upcoming.getTimeline({}, [&](const auto& timeline) { answer(timeline.entries.at(0).events.at(0)); });
        current.getTimeline({}, [&](const auto& timeline) { answer(timeline.entries.at(0).events.at(0)); });
    }
    EXPECT_TRUE(answers.empty());
    EXPECT_TRUE(platform::MainQueue::shared().runUntil([&] { return answers.size() == 6; }, 20));
    EXPECT_THAT(answers, ElementsAre("Later", "Later", "Running", "Later", "Later", "Running"));
    EXPECT_EQ(reloads, 6);
    EXPECT_EQ(announced, 0);
}

struct RecordingCenter final : platform::WidgetCenter {
    std::vector<std::string> kinds;
    void reloadTimelines(std::string_view ofKind) override { kinds.emplace_back(ofKind); }
};

TEST(HeedbannerWidgetBundle, AnAnnouncedReloadAsksOnceForEachKind) {
    test::CoreFixture core;
    const auto services = [&]() -> CoreServices& { return core.services(); };
    const HeedbannerWidgetBundle first(core.environment, services);
    const HeedbannerWidgetBundle second(core.environment, services);
    const auto center = std::make_shared<RecordingCenter>();
    platform::WidgetCenter::install(center);
    core.services().center().post(didReloadEventsNotification);
    platform::WidgetCenter::install(nullptr);
    core.services().center().post(didReloadEventsNotification);
    EXPECT_THAT(center->kinds, ElementsAre(widgetKind::nextEventCountdown, widgetKind::upcomingEvents,
                                           widgetKind::currentEvents));
}

}  // namespace
