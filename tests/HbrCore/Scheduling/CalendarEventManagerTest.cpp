#include <HbrCore/CoreFixture.h>
#include <HbrCore/Events/EventLookup.h>
#include <System/FileStamp.h>
#include <System/MainQueue.h>
#include <gmock/gmock.h>

#include <atomic>
#include <semaphore>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using test::titles;
using testing::ElementsAre;

void runUntil(const std::function<bool()>& condition) {
    ASSERT_TRUE(platform::MainQueue::shared().runUntil(condition, 20));
}

TEST(CalendarEventManager, AReloadSortsRealEventsIntoTheLists) {
    test::CoreFixture core;
    core.write("calendars/work.ics",
               meeting("Running", "20260304T083000Z") + meeting("Started now", "20260304T090000Z") +
                   meeting("Later", "20260305T083000Z") + meeting("Pending", "20260304T090030Z") +
                   meeting("Soon", "20260304T091000Z") +
                   meeting("Cancelled", "20260304T093000Z", "STATUS:CANCELLED\n") +
                   meeting("Beyond", "20260312T083000Z") +
                   "BEGIN:VEVENT\nUID:day\nSUMMARY:All day\nDTSTART;VALUE=DATE:20260304\nEND:VEVENT\n"
                   "BEGIN:VTODO\nUID:t1\nSUMMARY:Task\nDUE:20260304T120000Z\nEND:VTODO\n"
                   "BEGIN:VTODO\nUID:t2\nSUMMARY:Pending task\nDUE:20260304T090045Z\nEND:VTODO\n");
    core.services().reminders().addReminder({"own", at("2026-03-04T09:30:00Z"), "Own", std::nullopt, 60});
    const auto& manager = core.reloaded();
    EXPECT_THAT(titles(manager.allCachedCurrentEvents()), ElementsAre("Running", "Started now"));
    EXPECT_THAT(titles(manager.pendingEvents()), ElementsAre("Started now", "Pending"));
    EXPECT_THAT(titles(manager.pendingAppleReminderEvents()), ElementsAre("Pending task"));
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("Soon", "Own", "Task", "Later"));
    EXPECT_THAT(titles(manager.allCachedUpcomingEvents()),
                ElementsAre("Started now", "Pending", "Pending task", "Soon", "Own", "Task", "Later"));
}

TEST(CalendarEventManager, ExcludeRulesActOnAlertsOnly) {
    test::CoreFixture core;
    core.write("calendars/work.ics",
               meeting("Hidden", "20260304T083000Z") + meeting("Hidden pending", "20260304T090030Z") +
                   meeting("Hidden later", "20260304T120000Z") + meeting("Kept", "20260304T130000Z"));
    auto rule = FilterRule::makeDefault();
    rule.value = "Hidden";
    core.services().settings().setExcludeRules({rule});
    const auto& manager = core.reloaded();
    EXPECT_THAT(titles(manager.allCachedCurrentEvents()), ElementsAre("Hidden"));
    EXPECT_THAT(titles(manager.allCachedUpcomingEvents()), ElementsAre("Hidden pending", "Kept"));
    ASSERT_EQ(manager.invocations().size(), 1u);
    EXPECT_EQ(manager.invocations()[0].date, at("2026-03-04T12:59:00Z"));
}

TEST(CalendarEventManager, AHiddenOccurrenceIsInNoListAndTheOthersOfItsSeriesAre) {
    // Under way, pending and later; the last one's second occurrence was moved into its first hour.
    const std::string daily = "RRULE:FREQ=DAILY;COUNT=2\n";
    test::CoreFixture core;
    core.write("calendars/work.ics",
               meeting("Now", "20260304T083000Z", daily) + meeting("Soon", "20260304T090030Z", daily) +
                   meeting("Later", "20260304T120000Z", daily) +
                   meeting("Later", "20260304T123000Z", "RECURRENCE-ID:20260305T120000Z\n"));
    core.services().settings().setUpcomingEventsDaysFilter(1);
    const auto& manager = core.reloaded();
    const HiddenOccurrencesStore store = core.services().hiddenOccurrences();
    const platform::Date now = core.environment->now();
    const auto listed = [&] {
        reloadAndWait(core.services());
        std::multiset<std::string> starts;
        for (const Event& event : manager.allCachedEvents())
            starts.insert(platform::formatRfc3339(event.startDate));
        return starts;
    };
    const auto all = listed();
    ASSERT_EQ(all.size(), 6u);
    for (const EventRef& event : manager.lists()->all()) {
        const auto occurrence = occurrenceOf(core.services(), *event);
        ASSERT_TRUE(occurrence);
        ASSERT_TRUE(store.hide(*occurrence, now));
        auto others = all;
        others.erase(others.find(platform::formatRfc3339(event->startDate)));
        EXPECT_EQ(listed(), others) << *event->title;
        store.show(*occurrence, now);
    }
    EXPECT_EQ(listed(), all);
    EXPECT_FALSE(core.services().sharedDomain()->value(HiddenOccurrencesStore::storageKey));

    // What cannot be read stays, what is long past goes with the next change.
    const Occurrence old{"series", now.addingTimeInterval(-401 * 86400.0)};
    const Occurrence recent{"series", now.addingTimeInterval(-399 * 86400.0)};
    using platform::PropertyArray;
    core.services().sharedDomain()->setValue(HiddenOccurrencesStore::storageKey,
                                             PropertyArray{old.text(), recent.text(), "series later", 5});
    EXPECT_EQ(store.all().all(), (std::set{old, recent}));
    store.hide({"other", now}, now);
    store.rename("series", "renamed", now);
    EXPECT_EQ(core.services().sharedDomain()->value(HiddenOccurrencesStore::storageKey),
              (PropertyArray{"series later", 5, Occurrence{"other", now}.text(),
                             Occurrence{"renamed", recent.originalStart}.text()}));
    store.showAll("renamed", now);
    EXPECT_EQ(store.all().all().size(), 1u);
}

TEST(CalendarEventManager, TheWindowEndsWithTheLastDay) {
    test::CoreFixture core("2026-03-28T09:00:00Z");
    // The clocks in Berlin change on the 29th.
    core.write("calendars/work.ics", meeting("Last", "20260329T215959Z") +
                                         meeting("Next day", "20260329T220000Z") +
                                         meeting("Today", "20260328T225959Z"));
    core.services().settings().setUpcomingEventsDaysFilter(1);
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Today", "Last"));
    core.services().settings().setUpcomingEventsDaysFilter(0);
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Today"));
}

TEST(CalendarEventManager, ScreenshotModeShowsTheDemonstration) {
    test::CoreFixture core;
    core.services().settings().setDebugScreenshotMode(true);
    reloadAndWait(core.services());
    const auto current = core.services().manager().allCachedCurrentEvents();
    ASSERT_EQ(current.size(), 1u);
    EXPECT_EQ(current[0].startDate, at("2026-03-04T14:00:00Z"));
    EXPECT_THAT(titles(core.services().manager().allCachedUpcomingEvents()),
                ElementsAre("Design Sync", "Write sales report", "Candidate Interview", "Daily Standup"));
}

struct RecordingDelegate final : CalendarEventManagerDelegate {
    std::vector<std::string> reported;
    void didUpdateInvocations(const std::vector<AlertInvocation>& invocations) override {
        EXPECT_TRUE(platform::MainQueue::shared().isCurrent());
        std::string line = "alerts";
        for (const auto& each : invocations)
            line += " " + each.event->title.value_or("-") + (each.isSnooze ? "*" : "");
        reported.push_back(line);
    }
    void didRemoveSnoozedInvocation(const AlertInvocation& removed) override {
        reported.push_back("removed " + removed.event->title.value_or("-"));
    }
};

TEST(CalendarEventManager, AReloadNotifiesTheDelegateThenAnnouncesThenCompletes) {
    test::CoreFixture core;
    core.write("calendars/work.ics", meeting("Later", "20260304T120000Z"));
    auto& manager = core.reloaded();
    const auto delegate = std::make_shared<RecordingDelegate>();
    manager.setDelegate(delegate);
    const auto observation = core.services().center().observe(
        didReloadEventsNotification, [&] { delegate->reported.push_back("announced"); });
    bool isDone = false;
    manager.reloadEvents(true, [&] { isDone = true; });
    runUntil([&] { return isDone; });
    core.environment.advance(1);
    reloadAndWait(core.services());
    EXPECT_THAT(delegate->reported, ElementsAre("alerts Later", "announced", "alerts Later"));
}

TEST(CalendarEventManager, RequestsShareAReloadOfTheSameSecondThatKnowsEverything) {
    struct Case {
        const char* change;
        std::function<void(test::CoreFixture&)> make;
        /// Reloads that three quiet requests cause, and that settings which were announced as changed cause.
        std::size_t quiet;
        std::size_t announced;
    };
    const Case cases[] = {
        {"nothing", [](auto&) {}, 0, 0},
        {"the clock within the second", [](auto& core) { core.environment.advance(0.9); }, 0, 0},
        {"the second", [](auto& core) { core.environment.advance(1); }, 1, 1},
        {"the clock put back", [](auto& core) { core.environment.advance(-1); }, 1, 1},
        {"a setting", [](auto& core) { core.services().settings().setTimeOffsetSeconds(300); }, 1, 1},
        {"a rule", [](auto& core) { core.services().settings().setExcludeRules({}); }, 1, 1},
        {"a choice for an event",
         [](auto& core) { core.services().eventSettings().storeCustomSettings({}, "x"); }, 1, 1},
        {"a calendar",
         [](auto& core) {
             core.write("calendars/work.ics", meeting("Other", "20260304T120000Z"));
             core.services().aggregatedEventStore().refreshData();
         },
         1, 1},
        {"a handled alert",
         [](auto& core) {
             auto& manager = core.services().manager();
             manager.didHandleAlertInvocation(manager.invocations().at(0));
         },
         1, 1}};
    for (const Case& c : cases) {
        for (const bool isQuiet : {true, false}) {
            test::CoreFixture core;
            core.write("calendars/work.ics", meeting("Later", "20260304T120000Z"));
            auto& manager = core.reloaded();
            bool isDone = false;
            manager.reloadEvents(true, [&] { isDone = true; });
            runUntil([&] { return isDone; });
            // The announcement of a changed calendar would be another reload.
            auto silent = std::make_shared<RecordingDelegate>();
            c.make(core);
            manager.setDelegate(silent);
            std::size_t answered = 0;
            for (int i = 0; i < 3; ++i) {
                if (!isQuiet) manager.reloadChangedSettings();
                manager.reloadEvents(false, [&] { ++answered; });
            }
            runUntil([&] { return answered == 3; });
            const auto expected = isQuiet ? c.quiet : c.announced;
            if (std::string_view(c.change) == "a calendar") {
                EXPECT_GE(silent->reported.size(), expected) << c.change;
            } else {
                EXPECT_EQ(silent->reported.size(), expected) << c.change << (isQuiet ? "" : ", announced");
            }
        }
    }
}

TEST(CalendarEventManager, AReloadWithOtherSettingsAnswersNobodyElse) {
    test::CoreFixture core;
    core.write("calendars/work.ics",
               meeting("Soon", "20260305T083000Z") + meeting("Later", "20260324T083000Z"));
    auto& manager = core.reloaded();
    ReloadSettings settings = *manager.reloadSettings();
    EXPECT_EQ(manager.reloadSettings(), manager.reloadSettings()) << "read once";
    settings.days = 30;
    reloadAndWait(core.services(), settings);
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("Soon", "Later"));
    reloadAndWait(core.services());
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("Soon"));
}

TEST(CalendarEventManager, ReloadsShareWhatDidNotChange) {
    test::CoreFixture core;
    core.write("calendars/a.ics", meeting("A", "20260304T120000Z"));
    core.write("calendars/b.ics", meeting("B", "20260304T130000Z") +
                                      "BEGIN:VTODO\nUID:t\nSUMMARY:T\nDUE:20260304T150000Z\nEND:VTODO\n");
    auto& manager = core.reloaded();
    const auto first = manager.lists();
    ASSERT_EQ(first->scheduled.size(), 3u);
    core.environment.advance(60);
    reloadAndWait(core.services());
    EXPECT_EQ(manager.lists()->scheduled, first->scheduled);
    core.write("calendars/a.ics", meeting("A", "20260304T110000Z"));
    core.services().aggregatedEventStore().refreshData();
    reloadAndWait(core.services());
    const auto second = manager.lists();
    EXPECT_NE(second->scheduled[0], first->scheduled[0]);
    EXPECT_EQ(second->scheduled[1], first->scheduled[1]);
    EXPECT_EQ(second->scheduled[2], first->scheduled[2]);
    // A rule reaches records that were judged by others before.
    core.services().settings().setExcludeRules(
        {{platform::Uuid::random(), FilterRule::Field::title, FilterRule::ComparisonOperation::equals, "B"}});
    reloadAndWait(core.services());
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("A", "T"));
    core.services().settings().setExcludeRules({});
    reloadAndWait(core.services());
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("A", "B", "T"));
}

TEST(CalendarEventManager, SnoozesOutliveReloadsUntilHandledOrRemoved) {
    test::CoreFixture core;
    core.write("calendars/work.ics",
               meeting("Later", "20260304T120000Z") +
                   "BEGIN:VTODO\nUID:t\nSUMMARY:Task\nDUE:20260304T123000Z\nEND:VTODO\n");
    auto& manager = core.reloaded();
    core.services().reminders().addReminder({"own", at("2026-03-04T09:30:00Z"), "Own", std::nullopt, 0});
    runUntil([&] { return manager.scheduledEvents().size() == 3; });
    const Event later = manager.scheduledEvents().at(1);
    const auto delegate = std::make_shared<RecordingDelegate>();
    manager.setDelegate(delegate);

    manager.snooze(later, 5);
    manager.snooze(later, 5);
    core.environment.advance(60);
    manager.snooze(later, 5);
    bool isDone = false;
    manager.snoozeUntilTimeOfEvent(later, [&] { isDone = true; });
    runUntil([&] { return isDone; });
    reloadAndWait(core.services());
    const auto snoozed = manager.snoozedInvocations();
    ASSERT_EQ(snoozed.size(), 3u);
    EXPECT_EQ(snoozed[0].date, at("2026-03-04T09:05:00Z"));
    EXPECT_EQ(snoozed[1].date, at("2026-03-04T09:06:00Z"));
    EXPECT_EQ(snoozed[2].date, later.startDate);

    manager.didHandleAlertInvocation(snoozed[0]);
    delegate->reported.clear();
    manager.removeSnooze(later);
    manager.removeSnooze(manager.scheduledEvents().at(0));
    EXPECT_THAT(delegate->reported, ElementsAre("removed Later"));
    EXPECT_EQ(manager.snoozedInvocations(), std::vector{snoozed[2]});

    manager.snooze(*manager.cachedEvent("own"), 10);
    EXPECT_EQ(core.services().reminders().reminder("own")->date(), at("2026-03-04T09:40:00Z"));
    EXPECT_EQ(manager.snoozedInvocations().size(), 1u);
    manager.snooze(manager.scheduledEvents().at(2), 240);
    core.environment.setNow("2026-03-04T12:30:01Z");
    reloadAndWait(core.services());
    EXPECT_THAT(titles(manager.allCachedCurrentEvents()), ElementsAre("Later", "Task"))
        << "a task whose time has passed is current while it is snoozed";
}

TEST(CalendarEventManager, CalendarsAreSwitchedOnAndOff) {
    test::CoreFixture core;
    core.write("calendars/a/1.ics", meeting("A", "20260304T120000Z"));
    core.write("calendars/b/1.ics", meeting("B", "20260304T130000Z"));
    auto& manager = core.services().manager();
    const auto calendars = manager.fetchCalendars();
    ASSERT_EQ(calendars.size(), 2u);
    EXPECT_FALSE(calendars[0].active);
    manager.activateFirstCalendar();
    int reloads = 0;
    const auto observation =
        core.services().center().observe(didReloadEventsNotification, [&] { ++reloads; });
    manager.activateCalendar(calendars[0].identifier);
    manager.activateCalendar(calendars[1].identifier);
    runUntil([&] { return reloads == 1; });
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("A", "B"));
    manager.deactivateCalendar(calendars[0].identifier);
    runUntil([&] { return reloads == 2; });
    EXPECT_THAT(titles(manager.scheduledEvents()), ElementsAre("B"));
    EXPECT_TRUE(manager.fetchCalendars()[1].active);
}

/// A timer that the test fires.
struct DrivenTimer {
    platform::Date next;
    double interval = 0;
    std::function<void()> action;
    std::weak_ptr<void> isRunning;

    CalendarEventManager::StartTimer starter() {
        return [this](platform::Date first, double seconds, std::function<void()> work) {
            next = first;
            interval = seconds;
            action = std::move(work);
            const auto token = std::make_shared<int>();
            isRunning = token;
            return token;
        };
    }
};

/// A manager of the fixture's stores with a timer of its own.
std::unique_ptr<CalendarEventManager> driven(test::CoreFixture& core, DrivenTimer& timer,
                                             CalendarEventManager::Lifetime lifetime) {
    const auto borrowed = [](auto& store) {
        return std::shared_ptr<std::remove_reference_t<decltype(store)>>(std::shared_ptr<void>(), &store);
    };
    CoreServices& services = core.services();
    return std::make_unique<CalendarEventManager>(
        CalendarEventManager::Collaborators{.environment = core.environment,
                                            .center = services.center(),
                                            .settings = borrowed(services.settings()),
                                            .eventSettings = borrowed(services.eventSettings()),
                                            .reminders = borrowed(services.reminders()),
                                            .aggregatedEventStore = borrowed(services.aggregatedEventStore()),
                                            .parser = borrowed(services.parser()),
                                            .demoEvents = borrowed(services.demoEvents()),
                                            .startTimer = timer.starter()},
        lifetime);
}

TEST(CalendarEventManager, TheMinuteTimerReloadsOnWholeMinutesWhateverTheClockDoes) {
    using enum CalendarEventManager::Lifetime;
    struct Case {
        const char* now;
        const char* zone;
        const char* first;
    };
    for (const Case& c : {Case{"2026-03-04T09:00:00Z", "Europe/Berlin", "2026-03-04T09:02:00Z"},
                          Case{"2026-03-04T09:00:59.999Z", "Asia/Kolkata", "2026-03-04T09:02:00Z"},
                          Case{"2026-03-29T00:59:00.5Z", "Europe/Berlin", "2026-03-29T01:01:00Z"}}) {
        test::CoreFixture core(c.now, c.zone);
        DrivenTimer timer;
        const auto manager = driven(core, timer, longLived);
        EXPECT_EQ(timer.next, at(c.first)) << c.now;
        EXPECT_EQ(timer.interval, 60);
    }

    test::CoreFixture core("2026-03-04T09:00:20Z");
    core.write("calendars/a.ics", meeting("Stand-up", "20260304T090530Z"));
    core.reloaded();
    DrivenTimer timer;
    auto manager = driven(core, timer, longLived);
    {
        DrivenTimer none;
        driven(core, none, oneShot);
        EXPECT_FALSE(none.action) << "a process that answers once has no timer";
    }
    int announced = 0;
    const auto observation =
        core.services().center().observe(didReloadEventsNotification, [&] { ++announced; });
    const auto listed = [&]() -> std::string {
        if (!manager->allCachedCurrentEvents().empty()) return "current";
        if (!manager->pendingEvents().empty()) return "pending";
        return manager->scheduledEvents().empty() ? "-" : "scheduled";
    };
    struct Minute {
        const char* clock;
        const char* listed;
    };
    // The last ones: put forward by days, put back again.
    for (const Minute& minute :
         {Minute{"2026-03-04T09:02:00Z", "scheduled"}, Minute{"2026-03-04T09:04:00Z", "scheduled"},
          Minute{"2026-03-04T09:05:00Z", "pending"}, Minute{"2026-03-04T09:06:00Z", "current"},
          Minute{"2026-03-07T12:00:00Z", "-"}, Minute{"2026-03-04T09:03:00Z", "scheduled"}}) {
        core.environment.setNow(minute.clock);
        const int before = announced;
        timer.action();
        runUntil([&] { return announced > before; });
        EXPECT_EQ(announced, before + 1);
        EXPECT_EQ(listed(), minute.listed) << minute.clock;
    }
    manager.reset();
    EXPECT_TRUE(timer.isRunning.expired());
}

TEST(CalendarEventManager, AReloadOfWhatDidNotChangeWritesNothing) {
    test::CoreFixture core;
    core.write("calendars/a.ics",
               meeting("Later", "20260304T120000Z", "DESCRIPTION:https://meet.google.com/abc-defg-hij\n") +
                   "BEGIN:VTODO\nUID:t\nSUMMARY:Task\nDUE:20260304T120000Z\nEND:VTODO\n");
    for (const char* date : {"2026-02-04T09:00:00Z", "2026-03-04T09:30:00Z"})
        core.services().reminders().addReminder({date, at(date), "Own", std::nullopt, 0});
    core.services().settings().setExcludeRules({FilterRule::makeDefault()});
    core.reloaded();
    const auto files = [&] {
        std::map<std::string, platform::FileStamp> stamps;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(core.environment.home.path()))
            stamps.emplace(entry.path(), platform::FileStamp::of(entry.path()));
        return stamps;
    };
    const auto before = files();
    EXPECT_GT(before.size(), 5u);
    for (int i = 0; i < 3; ++i) {
        core.environment.advance(60);
        reloadAndWait(core.services());
    }
    EXPECT_TRUE(files() == before);
}

TEST(CalendarEventManager, MayEndWhileAReloadIsUnderWay) {
    bool isDone = false;
    {
        test::CoreFixture core;
        core.write("calendars/work.ics",
                   "BEGIN:VTODO\nUID:t\nSUMMARY:Task\nDUE:20260304T093000Z\nEND:VTODO\n");
        core.reloaded().reloadEvents(true, [&] { isDone = true; });
    }
    runUntil([&] { return isDone; });
}

/// Stops the calendar store's worker at each change, before the manager that is made later hears of it.
struct WorkerStop {
    std::atomic<bool> isStanding = false;
    std::counting_semaphore<> gate{0};
    platform::NotificationCenter::Observation observation =
        platform::NotificationCenter::shared().observe(platform::eventStoreChangedNotification, [this] {
            isStanding = true;
            isStanding.notify_all();
            gate.acquire();
        });
};

TEST(CalendarEventManager, WhatAReloadThatFellBehindWroteDoesNotStay) {
    WorkerStop stop;
    test::CoreFixture core;
    const std::string task = "BEGIN:VTODO\nUID:t\nSUMMARY:Task\nDUE:20260304T120000Z\nEND:VTODO\n";
    core.write("calendars/a.ics", meeting("Before", "20260304T120000Z") + task);
    auto& manager = core.reloaded();
    auto& store = core.services().aggregatedEventStore();
    core.write("calendars/a.ics", meeting("Old", "20260304T120000Z") + task);
    store.refreshData();
    stop.isStanding.wait(false);
    // Its tasks wait for the worker; then the meeting moves and the lists are switched off.
    std::vector<std::string> seen;
    manager.reloadEvents(false, [&] { seen = titles(manager.allCachedUpcomingEvents()); });
    core.write("calendars/a.ics", meeting("New", "20260304T130000Z") + task);
    store.refreshData();
    core.services().settings().setActiveReminderListIdentifiers({});
    reloadAndWait(core.services());
    EXPECT_THAT(titles(manager.allCachedUpcomingEvents()), ElementsAre("New"));
    stop.gate.release();
    runUntil([&] { return !seen.empty(); });
    EXPECT_THAT(seen, ElementsAre("Old", "Task"));
    runUntil([&] { return titles(manager.allCachedUpcomingEvents()) == std::vector<std::string>{"New"}; });
    EXPECT_EQ(manager.invocations().at(0).event->title, "New");
    stop.gate.release(10);
}

}  // namespace
