#include "CalendarFixture.h"

#include <System/MainQueue.h>
#include <gmock/gmock.h>
#include <support/Threads.h>

#include <atomic>
#include <filesystem>
#include <future>
#include <map>
#include <random>
#include <thread>

#include <sys/stat.h>

namespace {

using namespace platform;
using test::CalendarFixture;
using test::eventually;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

const char* dayStart = "2026-03-04T00:00:00Z";
const char* dayEnd = "2026-03-05T00:00:00Z";

std::string meeting(std::string_view title, std::string_view uid = "u") {
    return test::calendar(
        test::event("UID:" + std::string(uid) + "\nDTSTART:20260304T090000Z\nSUMMARY:" + std::string(title)));
}

std::vector<std::string> titles(const EKEventStore& store) {
    std::vector<std::string> result;
    for (const auto& calendar : store.calendars(EKEntityType::event))
        result.push_back(calendar->title);
    return result;
}

TEST(EKEventStore, FindsTheCollectionsOfAnAccount) {
    CalendarFixture fixture;
    fixture.write("work/1.ics", meeting("one", "1"));
    fixture.write("work/notes.txt", "not read");
    fixture.write("work/displayname", "Work & more\n");
    fixture.write("work/color", "#FF8800\n");
    fixture.write("deep/2/3/4/a.ics", meeting("four", "4"));
    fixture.write("deep/2/3/4/5/a.ics", meeting("five", "5"));
    fixture.write(".hidden/a.ics", meeting("hidden", "6"));
    fixture.write("empty/displayname", "Empty");
    fixture.write("nothing/readme", "");
    fixture.account("File",
                    fixture.environment.home.write(
                        "one.ics", "BEGIN:VCALENDAR\nX-WR-CALNAME:Holidays\\, all\nCOLOR:teal\n" +
                                       test::event("DTSTART;VALUE=DATE:20260304") + "END:VCALENDAR\n"));
    auto& store = fixture.store();
    EXPECT_THAT(titles(store), ElementsAre("4", "Empty", "Work & more", "Holidays, all"));
    const auto calendars = store.calendars(EKEntityType::event);
    EXPECT_EQ(calendars[2]->color.hexString(), "#FF8800");
    EXPECT_EQ(calendars[3]->color.hexString(), "#008080");
    EXPECT_NE(calendars[0]->color, calendars[1]->color) << "fallback colours differ within an account";
    EXPECT_EQ(calendars[0]->source->ownerAddresses, std::vector<std::string>{"mailto:Me@Example.org"});
    std::set<std::string> identifiers;
    for (const auto& calendar : calendars) {
        identifiers.insert(calendar->calendarIdentifier);
        EXPECT_EQ(calendar->calendarIdentifier.find_first_not_of("0123456789abcdefghijklmnopqrstuvwxyz-"),
                  std::string::npos);
        EXPECT_EQ(store.calendarWithIdentifier(calendar->calendarIdentifier), calendar);
    }
    EXPECT_EQ(identifiers.size(), 4u);
    EXPECT_EQ(store.calendarWithIdentifier("other"), nullptr);
    EXPECT_THAT(fixture.list(dayStart, dayEnd),
                ElementsAre("2026-03-04 1d T", testing::EndsWith("four"), testing::EndsWith("one")));

    fixture.restart();
    const auto again = fixture.store().calendars(EKEntityType::event);
    for (std::size_t i = 0; i < again.size(); ++i) {
        EXPECT_EQ(again[i]->calendarIdentifier, calendars[i]->calendarIdentifier);
        EXPECT_EQ(again[i]->color, calendars[i]->color);
    }
}

TEST(EKEventStore, LinksAreFollowedAndOnlyRegularFilesOpened) {
    CalendarFixture fixture;
    namespace fs = std::filesystem;
    const auto outside = fixture.environment.home.write("outside/b.ics", meeting("linked", "2"));
    fixture.write("a/a.ics", meeting("own", "1"));
    fs::create_symlink(outside, fixture.folder() / "a/linked.ics");
    fs::create_directory_symlink(fixture.folder(), fixture.folder() / "a/loop");
    fs::create_symlink("nowhere", fixture.folder() / "a/dangling.ics");
    ASSERT_EQ(mkfifo((fixture.folder() / "a/pipe.ics").c_str(), 0600), 0);
    fs::create_symlink(fixture.folder() / "a/pipe.ics", fixture.folder() / "a/to-pipe.ics");
    EXPECT_THAT(fixture.list(dayStart, dayEnd),
                testing::UnorderedElementsAre("2026-03-04 09:00Z 0m own", "2026-03-04 09:00Z 0m linked"));
    EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr("pipe.ics:0 is not a regular file")));
    EXPECT_EQ(fixture.store().calendars(EKEntityType::event).size(), 1u);
}

TEST(EKEventStore, AFileIsReadUpToItsLimit) {
    CalendarFixture fixture;
    for (const std::uintmax_t above : {0U, 1U}) {
        // Sparse: what follows the text is a hole.
        const auto file = fixture.write("a.ics", test::calendar(test::event("DTSTART:20260304T090000Z")));
        std::filesystem::resize_file(file, (std::uintmax_t{64} << 20U) + above);
        fixture.restart();
        EXPECT_EQ(fixture.list("2026-03-01T00:00:00Z", "2026-03-31T00:00:00Z").size(), 1 - above);
        EXPECT_EQ(testing::Matches(testing::Contains(testing::HasSubstr("larger than 64 MB")))(
                      fixture.diagnostics()),
                  above == 1);
    }
}

TEST(EKEventStore, DelegatedAccountsFormAStoreOfTheirOwn) {
    CalendarFixture fixture;
    fixture.write("a.ics", meeting("mine", "1"));
    fixture.account("Boss", fixture.environment.home.write("boss.ics", meeting("theirs", "1")), true);
    fixture.account("Feasts", fixture.environment.home.write("feasts.ics", meeting("feast", "2")), false,
                    Account::Kind::holidays);
    EXPECT_THAT(titles(fixture.store()), ElementsAre("Home", "Feasts"));
    EXPECT_TRUE(fixture.store().calendars(EKEntityType::event)[1]->isSubscribedHolidayCalendar);
    EKEventStore delegates(fixture.environment, fixture.center, fixture.sources(),
                           fixture.store().delegateSources());
    EXPECT_THAT(titles(delegates), ElementsAre("Boss"));
    const auto calendar = delegates.calendars(EKEntityType::event)[0];
    EXPECT_TRUE(calendar->source->isDelegate);
    // Calendars of another store in the question are skipped.
    auto both = fixture.store().calendars(EKEntityType::event);
    both.push_back(calendar);
    EXPECT_EQ(
        delegates.events(delegates.predicateForEvents(test::at(dayStart), test::at(dayEnd), both)).size(),
        1u);
}

TEST(EKEventStore, EveryChangeIsSeenAndReportedOnce) {
    CalendarFixture fixture;
    fixture.write("a.ics", meeting("before"));
    EXPECT_THAT(fixture.list(dayStart, dayEnd), ElementsAre("2026-03-04 09:00Z 0m before"));
    std::atomic<int> reported = 0;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] { ++reported; });
    const auto expectChange = [&](int times, const std::vector<std::string>& lines) {
        fixture.store().refreshSourcesIfNecessary();
        EXPECT_TRUE(eventually([&] { return reported == times; })) << reported;
        EXPECT_EQ(fixture.list(dayStart, dayEnd), lines);
    };
    expectChange(0, {"2026-03-04 09:00Z 0m before"});
    fixture.write("a.ics", meeting("behind"));  // In place, same size, perhaps the same time stamp.
    expectChange(1, {"2026-03-04 09:00Z 0m behind"});
    fixture.write("b.ics", meeting("second", "2"));
    fixture.store().refreshSourcesIfNecessary();
    EXPECT_TRUE(eventually([&] { return reported == 2; }));
    EXPECT_EQ(fixture.list(dayStart, dayEnd).size(), 2u);
    std::filesystem::remove(fixture.folder() / "b.ics");
    expectChange(3, {"2026-03-04 09:00Z 0m behind"});
    fixture.write("color", "#123456");
    expectChange(4, {"2026-03-04 09:00Z 0m behind"});
    EXPECT_EQ(fixture.events(dayStart, dayEnd)[0]->calendar->color.hexString(), "#123456");
    fixture.write("a.ics", meeting("behind"));  // Touched only.
    expectChange(4, {"2026-03-04 09:00Z 0m behind"});
    std::filesystem::remove_all(fixture.folder());
    expectChange(5, {});
}

TEST(EKEventStore, WatchingNoticesEveryWayInWhichFilesChange) {
    CalendarFixture fixture;
    const auto folder = fixture.folder();
    fixture.write("a.ics", meeting("one"));
    std::atomic<int> reported = 0;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] { ++reported; });
    fixture.store().startWatching();
    const auto shows = [&](const std::vector<std::string>& titles) {
        std::vector<std::string> lines;
        for (const auto& title : titles)
            lines.push_back("2026-03-04 09:00Z 0m " + title);
        return eventually([&] { return fixture.list(dayStart, dayEnd) == lines; });
    };
    EXPECT_TRUE(shows({"one"}));
    fixture.write("a.ics", meeting("two"));
    EXPECT_TRUE(shows({"two"})) << "written in place";
    std::filesystem::rename(fixture.environment.home.write("beside", meeting("three")), folder / "a.ics");
    EXPECT_TRUE(shows({"three"})) << "renamed over";
    std::filesystem::remove(folder / "a.ics");
    EXPECT_TRUE(shows({})) << "removed";

    const auto away = fixture.environment.home / "away";
    fixture.write("a.ics", meeting("four"));
    EXPECT_TRUE(shows({"four"}));
    std::filesystem::rename(folder, away);
    EXPECT_TRUE(shows({})) << "the folder vanished";
    std::filesystem::rename(away, folder);
    EXPECT_TRUE(shows({"four"})) << "and came back";
    fixture.write("a.ics", meeting("five"));
    EXPECT_TRUE(shows({"five"})) << "and is watched again";

    for (const char* file : {"new/a.ics", "new/b.ics"}) {
        fixture.write(file, meeting("five", file));
        EXPECT_TRUE(eventually([&] {
            return fixture.list(dayStart, dayEnd).size() == (file[4] == 'a' ? 2u : 3u);
        })) << "a folder that came later is watched too";
    }
    const int before = reported;
    for (int i = 0; i < 100; ++i)
        fixture.write("burst" + std::to_string(i) + ".ics", meeting("more", "more" + std::to_string(i)));
    EXPECT_TRUE(eventually([&] { return fixture.list(dayStart, dayEnd).size() == 103; }));
    EXPECT_LT(reported - before, 10) << "a hundred files are not reported one by one";
}

/// One account whose texts are in memory.
class MemorySources final : public CalendarSources {
  public:
    std::vector<Account> accounts() const override { return {{.name = "Server"}}; }
    std::string problem(const Account&) const override { return refusal; }
    AccountContents load(const Account& account) const override {
        AccountContents contents{problem(account), {}, {"subscription"}};
        if (contents.problem.empty()) contents.collections = collections;
        return contents;
    }
    std::optional<std::string> read(const CalendarText& text, DiagnosticsSink&) const override {
        ++reads;
        const auto known = texts.find(text.name);
        return known == texts.end() ? std::nullopt : std::optional(known->second);
    }
    std::shared_ptr<void> watch(const std::vector<std::filesystem::path>& watched,
                                std::function<void()> changed) const override {
        EXPECT_THAT(watched, ElementsAre("subscription"));
        notify = std::move(changed);
        return std::shared_ptr<void>(nullptr, [this](void*) { notify = nullptr; });
    }

    std::string refusal;
    std::vector<CalendarCollection> collections;
    std::map<std::filesystem::path, std::string> texts;
    mutable std::atomic<int> reads = 0;
    mutable std::function<void()> notify;
};

TEST(EKEventStore, ASourceNeedsNoFiles) {
    test::TestEnvironment environment;
    NotificationCenter center;
    const auto server = std::make_shared<MemorySources>();
    server->collections = {{"named", "server/named", "Title", "teal", {{"1", 1}, {"gone", 1}}},
                           {"other", "server/other", {}, {}, {{"2", 1}, {"3", {}}}}};
    server->texts = {{"1", "BEGIN:VCALENDAR\nX-WR-CALNAME:ignored\n" + meeting("one", "1").substr(17)},
                     {"2", "BEGIN:VCALENDAR\nX-WR-CALNAME:Own\n" + meeting("two", "2").substr(17)},
                     {"3", meeting("three", "3")}};
    {
        EKEventStore store(environment, center, server);
        EXPECT_THAT(titles(store), ElementsAre("Title", "Own"));
        const auto calendars = store.calendars(EKEntityType::event);
        EXPECT_EQ(calendars[0]->color.hexString(), "#008080");
        const auto count = [&] {
            return store.events(store.predicateForEvents(test::at(dayStart), test::at(dayEnd), calendars))
                .size();
        };
        EXPECT_EQ(count(), 3u);
        EXPECT_EQ(store.report().at(0).collections.at(1).location, "server/other");

        server->reads = 0;
        store.refreshSourcesIfNecessary();
        EXPECT_EQ(server->reads, 2) << "the text without a version and the missing one";

        server->collections[1].texts.pop_back();
        store.startWatching();
        EXPECT_TRUE(eventually([&] { return count() == 2; })) << "it changed before it was watched";

        server->texts["1"] = meeting("later", "1");
        server->collections[0].texts = {{"1", 2}};
        server->collections[1].texts.clear();
        server->notify();
        EXPECT_TRUE(eventually([&] { return count() == 1; }));

        server->refusal = "no answer";
        server->notify();
        EXPECT_TRUE(eventually(
            [&] { return store.authorizationStatus(EKEntityType::event) == EKAuthorizationStatus::denied; }));
        EXPECT_EQ(store.report().at(0).problem, "no answer");
    }
    EXPECT_FALSE(server->notify) << "the watch ended with the store";
}

TEST(EKEventStore, QuestionsFromManyThreadsWhileFilesChange) {
    CalendarFixture fixture;
    fixture.write("a.ics", test::calendar(test::event("DTSTART:20260101T090000Z\nRRULE:FREQ=DAILY")));
    const auto calendars = fixture.store().calendars(EKEntityType::event);
    std::atomic<bool> stop = false;
    std::atomic<int> wrong = 0;
    std::vector<std::jthread> threads;
    for (int t = 0; t < 3; ++t) {
        threads.emplace_back([&, t] {
            for (int i = 0; !stop; ++i) {
                const auto from = test::at(dayStart).addingTimeInterval((i % 50 + t) * 86400.0);
                auto& store = fixture.store();
                const auto found =
                    store.events(store.predicateForEvents(from, from.addingTimeInterval(86399), calendars));
                if (found.size() != 1 || found[0]->title->size() != 1) ++wrong;
                for (int again = 0; again < 50; ++again)
                    if (store.calendars(EKEntityType::event) != calendars) ++wrong;
                if (!store.eventWithIdentifier(found[0]->eventIdentifier) || store.report().size() != 1)
                    ++wrong;
            }
        });
    }
    for (int i = 0; i < 20; ++i) {
        fixture.write("c.ics", test::calendar(test::event("UID:c\nDTSTART:2020010" +
                                                          std::to_string(i % 9 + 1) + "T000000Z")));
        fixture.store().refreshSourcesIfNecessary();
    }
    stop = true;
    threads.clear();
    EXPECT_EQ(wrong, 0);
}

TEST(EKEventStore, ARecordStaysTheSameObjectUntilItsItemChanges) {
    CalendarFixture fixture;
    fixture.write("a.ics", test::calendar(test::event("UID:a\nDTSTART:20260304T090000Z\nRRULE:FREQ=WEEKLY")));
    fixture.write("b.ics", meeting("before", "b"));
    fixture.write("c.ics", test::calendar("BEGIN:VTODO\nUID:c\nDUE:20260304T090000Z\nEND:VTODO\n"));
    auto& store = fixture.store();
    const auto ask = [&](const char* end) { return fixture.events(dayStart, end); };
    const auto first = ask("2026-12-31T00:00:00Z");
    const auto tasks = fixture.tasks(dayStart, dayEnd);
    ASSERT_EQ(tasks.size(), 1u);
    ASSERT_EQ(first.size(), 45u);
    EXPECT_EQ(ask("2026-12-31T00:00:00Z"), first) << "ten months, from memory";
    auto longer = ask("2028-12-31T00:00:00Z");
    longer.resize(first.size());
    EXPECT_EQ(longer, first) << "a longer interval keeps what was made for the shorter one";

    const auto revision = store.revision();
    store.refreshSourcesIfNecessary();
    EXPECT_EQ(store.revision(), revision);
    fixture.write("b.ics", meeting("after", "b"));
    store.refreshSourcesIfNecessary();
    EXPECT_NE(store.revision(), revision);
    const auto second = ask("2026-12-31T00:00:00Z");
    ASSERT_EQ(second.size(), first.size());
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_EQ(second[i] == first[i], *first[i]->title != "before") << i;
    EXPECT_EQ(fixture.tasks(dayStart, dayEnd), tasks);

    // What another item changes in the same series is made again.
    fixture.write("d.ics", test::calendar(test::event("UID:a\nRECURRENCE-ID:20260304T090000Z\n"
                                                      "DTSTART:20260304T090000Z\nSUMMARY:moved")));
    store.refreshSourcesIfNecessary();
    EXPECT_THAT(fixture.list(dayStart, dayEnd),
                testing::UnorderedElementsAre(HasSubstr("moved"), HasSubstr("after")));
    fixture.write("color", "#123456");
    store.refreshSourcesIfNecessary();
    EXPECT_EQ(fixture.events(dayStart, dayEnd)[0]->calendar->color.hexString(), "#123456");
}

TEST(EKEventStore, MayBeReleasedByItsObserver) {
    CalendarFixture fixture;
    auto store = std::make_shared<EKEventStore>(fixture.environment, fixture.center, fixture.sources());
    std::promise<void> released;
    std::atomic<bool> isReported = false;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] {
        released.get_future().wait();
        store.reset();
        isReported = true;
    });
    fixture.write("a.ics", meeting("one"));
    auto asking = store;
    EXPECT_THAT(titles(*asking), ElementsAre("Home"));
    fixture.write("a.ics", meeting("other"));
    asking->refreshSourcesIfNecessary();
    asking.reset();
    released.set_value();
    EXPECT_TRUE(eventually([&] { return isReported.load(); }));
    // What is left of it ends on the main queue.
    bool isDrained = false;
    MainQueue::shared().async([&] { isDrained = true; });
    EXPECT_TRUE(MainQueue::shared().runUntil([&] { return isDrained; }, 20));
}

TEST(EKEventStore, LaterQuestionsAgreeWithFreshOnesAlsoAfterEdits) {
    CalendarFixture fixture;
    std::string items =
        test::event("UID:long\nDTSTART:20260101T000000Z\nDTEND:20260601T000000Z\nSUMMARY:long");
    for (int i = 0; i < 60; ++i) {
        char lines[160];
        std::snprintf(lines, sizeof lines,
                      "UID:%d\nDTSTART;TZID=Europe/Berlin:202603%02dT%02d0000\nDURATION:PT%dH%s", i,
                      i % 28 + 1, i % 24, i % 30, i % 3 == 0 ? "\nRRULE:FREQ=WEEKLY" : "");
        items += test::event(lines);
    }
    fixture.write("a.ics", test::calendar(items));
    CalendarFixture fresh;
    fresh.write("a.ics", test::calendar(items));
    // Few UIDs for many items: repeated ones, changed occurrences with and without their series, tasks.
    std::mt19937 random(20260304);
    const auto pick = [&](unsigned count) { return std::to_string(random() % count); };
    const auto edit = [&] {
        std::string text;
        for (auto left = random() % 6; left > 0; --left) {
            std::string lines = random() % 5 == 0 ? "" : "UID:e" + pick(7) + "\nSEQUENCE:" + pick(3) + "\n";
            lines +=
                "SUMMARY:" + pick(9) + "\nDTSTART:2026030" + std::to_string(1 + random() % 9) + "T090000Z";
            if (random() % 3 == 0)
                lines += "\nRRULE:FREQ=DAILY;COUNT=" + std::to_string(2 + random() % 40);
            else if (random() % 2 == 0)
                lines += "\nRECURRENCE-ID:2026030" + std::to_string(1 + random() % 9) + "T090000Z";
            text += random() % 4 == 0 ? "BEGIN:VTODO\n" + lines + "\nEND:VTODO\n" : test::event(lines);
        }
        const std::string name = "edited" + pick(5) + ".ics";
        for (auto* one : {&fixture, &fresh})
            one->write(name, test::calendar(text));
        fixture.store().refreshSourcesIfNecessary();
    };
    for (int i = 0; i < 80; ++i) {
        if (i >= 40) edit();
        const auto from = test::at("2026-02-25T00:00:00Z").addingTimeInterval(i % 40 * 3.1 * 86400);
        // From a moment to more than a year.
        const auto to = from.addingTimeInterval(i % 5 * 40000.0 + (i % 7 == 6 ? i * 864000.0 : 0));
        const auto ask = [&](CalendarFixture& one) {
            auto& store = one.store();
            std::vector<std::string> lines;
            for (const auto& event :
                 store.events(store.predicateForEvents(from, to, store.calendars(EKEntityType::event)))) {
                lines.push_back(test::describe(*event, one.environment->calendar) +
                                event->calendarItemExternalIdentifier);
            }
            return lines;
        };
        fresh.restart();
        EXPECT_EQ(ask(fixture), ask(fresh)) << from.description();
        const char* const all[] = {"2026-01-01T00:00:00Z", "2026-07-01T00:00:00Z"};
        EXPECT_EQ(fixture.list(all[0], all[1]), fresh.list(all[0], all[1])) << i;
        EXPECT_EQ(fixture.tasks(all[0], all[1]).size(), fresh.tasks(all[0], all[1]).size()) << i;
    }
}

}  // namespace
