#include <HbrCore/CoreFixture.h>
#include <System/MainQueue.h>
#include <gmock/gmock.h>
#include <support/LogCapture.h>

#include <sys/stat.h>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using test::titles;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(AggregatedEventStore, DelegatedCalendarsAreListedOnceAccessWasRequested) {
    test::CoreFixture core;
    core.account("Boss", "delegated", true);
    core.write("calendars/own.ics", meeting("Both", "20260304T120000Z") + meeting("Own", "20260304T130000Z"));
    core.write("delegated/theirs.ics",
               meeting("Both", "20260304T120000Z") + meeting("Theirs", "20260304T140000Z"));
    auto& store = core.services().aggregatedEventStore();
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Both", "Own"));
    int granted = 0;
    const auto observation =
        core.services().center().observe(grantedPermissionNotification, [&] { ++granted; });
    store.requestCalendarAccess([](std::exception_ptr error) { EXPECT_FALSE(error); });
    EXPECT_THAT(titles(core.reloaded().scheduledEvents()), ElementsAre("Both", "Own", "Theirs"));
    EXPECT_EQ(granted, 1);
    const auto calendars = core.services().manager().fetchCalendars();
    ASSERT_EQ(calendars.size(), 2u);
    EXPECT_TRUE(calendars[1].isDelegate);
    EXPECT_EQ(
        core.services().manager().accountEmailForEvent(core.services().manager().scheduledEvents()[2].id),
        "me@example.org");
}

TEST(AggregatedEventStore, WithoutAccessTheRequestSaysSoAndListsAreEmpty) {
    test::TestEnvironment environment;
    CoreServices services(environment, {});
    bool isRefused = false;
    services.aggregatedEventStore().requestCalendarAccess([&](std::exception_ptr error) {
        try {
            std::rethrow_exception(error);
        } catch (const EventKitError& refusal) {
            isRefused = refusal.code() == EventKitError::Code::accessNotGranted;
        }
    });
    EXPECT_TRUE(isRefused);
    reloadAndWait(services);
    EXPECT_THAT(services.manager().allCachedEvents(), IsEmpty());
}

TEST(AggregatedEventStore, OneOccurrenceInBothStoresIsListedOnce) {
    test::CoreFixture core;
    core.account("Boss", "delegated", true);
    const auto item = [](std::string_view uid, std::string_view lines) {
        return "BEGIN:VEVENT\nUID:" + std::string(uid) + "\n" + std::string(lines) + "END:VEVENT\n";
    };
    const std::string noon = "DTSTART:20260304T120000Z\nDURATION:PT1H\n";
    const std::string longer = "DTSTART:20260304T120000Z\nDURATION:PT2H\n";
    const std::string day = "DTSTART;VALUE=DATE:20260304\nSUMMARY:Day\n";
    const std::tuple<const char*, std::string, std::string, std::size_t> cases[] = {
        {"the same", item("1", noon + "SUMMARY:A\n"), item("2", noon + "SUMMARY:A\n"), 1},
        {"another title", item("1", noon + "SUMMARY:A\n"), item("2", noon + "SUMMARY:B\n"), 2},
        {"no title in one", item("1", noon + "SUMMARY:A\n"), item("2", noon), 2},
        {"no title in both", item("1", noon), item("2", noon), 1},
        {"another end", item("1", noon), item("2", longer), 2},
        {"a series and a single one", item("1", noon + "RRULE:FREQ=DAILY;COUNT=1\n"), item("2", noon), 2},
        {"all day in one", item("1", day),
         item("2", "DTSTART:20260303T230000Z\nDTEND:20260304T230000Z\nSUMMARY:Day\n"), 2},
        {"twice in the own store", item("1", noon) + item("2", noon), "", 2},
        {"twice in the delegated one", "", item("1", noon) + item("2", noon), 1}};
    auto& store = core.services().aggregatedEventStore();
    for (const auto& [what, own, delegated, count] : cases) {
        core.write("calendars/own.ics", own);
        core.write("delegated/theirs.ics", delegated);
        store.refreshData();
        store.requestCalendarAccess([](std::exception_ptr error) { EXPECT_FALSE(error); });
        store.refreshData();
        core.services().manager().activateAllCalendars();
        const auto found = store.events(at("2026-03-04T00:00:00Z"), at("2026-03-05T00:00:00Z"));
        ASSERT_EQ(found.size(), count) << what;
        const std::string first = own.empty() ? "Boss" : "Home";
        EXPECT_EQ(found.front()->calendar->source->title, first) << what;
    }
}

TEST(AggregatedEventStore, AStartLooksThroughEachFolderOnce) {
    /// A pipe is reported each time its folder is looked through.
    struct Pipes final : platform::DiagnosticsSink {
        std::vector<std::string> seen;
        void report(platform::Diagnostic diagnostic) override {
            seen.push_back(diagnostic.file.parent_path().filename());
        }
    };
    for (const bool asks : {false, true}) {
        test::CoreFixture core;
        const auto pipes = std::make_shared<Pipes>();
        core.environment.change().diagnostics = pipes;
        core.account("Boss", "delegated", true);
        core.write("calendars/own.ics", meeting("Own", "20260304T120000Z"));
        core.write("delegated/theirs.ics", meeting("Theirs", "20260304T130000Z"));
        for (const char* folder : {"calendars", "delegated"})
            ASSERT_EQ(mkfifo((core.environment.home / folder / "pipe.ics").c_str(), 0600), 0);
        CoreServices services(core.environment, {.asksForAccess = asks});
        services.manager().activateAllCalendars();
        reloadAndWait(services);
        EXPECT_FALSE(services.aggregatedEventStore().report().empty());
        EXPECT_EQ(services.manager().scheduledEvents().size(), asks ? 2u : 1u);
        const std::vector<std::string> own = {"calendars"};
        EXPECT_EQ(pipes->seen, asks ? (std::vector<std::string>{"calendars", "delegated"}) : own);
    }
}

TEST(AggregatedEventStore, LooksCalendarsUpAgainAfterAccessWasGiven) {
    test::CoreFixture core;
    core.account("Boss", "delegated", true);
    core.write("delegated/theirs/1.ics", meeting("Theirs", "20260304T120000Z"));
    auto& store = core.services().aggregatedEventStore();
    const auto ask = [&] { store.requestCalendarAccess([](std::exception_ptr) {}); };
    ask();
    const auto identifier = store.calendars(platform::EKEntityType::event).at(0)->calendarIdentifier;
    EXPECT_EQ(store.calendarWithIdentifier(identifier)->title, "theirs");
    core.environment.home.write("delegated/theirs/displayname", "Board");
    ask();
    EXPECT_EQ(store.calendarWithIdentifier(identifier)->title, "Board");
}

TEST(AggregatedEventStore, ActiveCalendarsKeepTheOrderOfTheSettingWithoutUnknownOnes) {
    test::CoreFixture core;
    core.write("calendars/a/1.ics", meeting("A", "20260304T120000Z"));
    core.write("calendars/b/1.ics", meeting("B", "20260304T130000Z"));
    auto& store = core.services().aggregatedEventStore();
    const auto all = store.calendars(platform::EKEntityType::event);
    core.services().settings().setActiveCalendarIdentifiers(
        {all.at(1)->calendarIdentifier, "gone", all.at(0)->calendarIdentifier});
    EXPECT_THAT(store.activeCalendars(), ElementsAre(all[1], all[0]));
}

TEST(AggregatedEventStore, PendingEventsBeginWithinTheHourAndInsideTheirAlertPeriod) {
    test::CoreFixture core;
    core.write("calendars/a.ics",
               meeting("Half a minute", "20260304T090030Z") + meeting("A minute", "20260304T090100Z") +
                   meeting("Excluded", "20260304T090010Z") + meeting("Half an hour", "20260304T093000Z") +
                   meeting("An hour", "20260304T100000Z") + meeting("A second more", "20260304T100001Z") +
                   meeting("Begun", "20260304T085959Z"));
    core.reloaded();
    const auto pending = [&] {
        return titles(core.services().aggregatedEventStore().pendingEvents(core.environment->now()));
    };
    for (const Event& event : core.services().manager().allCachedEvents()) {
        if (event.title == "Excluded")
            core.services().eventSettings().storeCustomSettings({.isExcluded = true}, event.id);
    }
    EXPECT_THAT(pending(), ElementsAre("Half a minute"));
    core.services().settings().setTimeOffsetSeconds(7200);
    EXPECT_THAT(pending(), ElementsAre("Half a minute", "A minute", "Half an hour", "An hour"));
}

TEST(AggregatedEventStore, AccessRequestsSayWhatCameOfThem) {
    struct Case {
        bool hasAccount;
        int version;
        bool isForEvents;
        bool isRefused;
        std::vector<std::string> reports;
    };
    using Lines = std::vector<std::string>;
    const std::string asksCalendar = "INFO [EventKit]: Requesting Calendar access";
    const std::string asksReminders = "INFO [EventKit]: Requesting Reminders access";
    const Lines granted = {asksCalendar, "INFO [EventKit]: Calendar permission granted", "posted"};
    const Lines refused = {asksCalendar, "WARNING [EventKit]: No Calendar access. Showing permission alert"};
    const Lines reminders = {asksReminders, "INFO [EventKit]: Reminder permission granted", "posted"};
    const Lines noReminders = {asksReminders, "WARNING [EventKit]: No Reminder access.", "posted"};
    const Case cases[] = {{true, 14, true, false, granted},    {true, 13, true, false, granted},
                          {false, 14, true, true, refused},    {false, 13, true, true, refused},
                          {true, 14, false, false, reminders}, {false, 13, false, false, noReminders}};
    for (const Case& c : cases) {
        test::CoreFixture core;
        if (!c.hasAccount) std::filesystem::remove(platform::AccountsFile(core.environment).path());
        core.environment.change().platformVersion = {c.version, 0, 0};
        auto& store = core.services().aggregatedEventStore();
        const test::LogCapture log;
        int announced = 0;
        const auto observation = platform::NotificationCenter::shared().observe(grantedPermissionNotification,
                                                                                [&] { ++announced; });
        int completed = 0;
        const auto completion = [&](std::exception_ptr error) {
            ++completed;
            EXPECT_EQ(static_cast<bool>(error), c.isRefused);
        };
        c.isForEvents ? store.requestCalendarAccess(completion) : store.requestReminderAccess(completion);
        auto lines = log.lines();
        if (announced == 1) lines.emplace_back("posted");
        EXPECT_EQ(lines, c.reports);
        EXPECT_EQ(completed, 1);
        EXPECT_EQ(store.hasCalendarAccess(), c.hasAccount);
        EXPECT_EQ(store.hasReminderAccess(), c.hasAccount);
    }
}

}  // namespace
