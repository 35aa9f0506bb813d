#include "CalendarFixture.h"

#include <Foundation/MainQueue.h>
#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <future>
#include <thread>

#include <sys/stat.h>

namespace {

using namespace platform;
using test::CalendarFixture;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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

bool eventually(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline) return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    return true;
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
    EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr("pipe.ics:0 is no regular file")));
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

TEST(EKEventStore, AccessFollowsTheAccounts) {
    test::TestEnvironment environment;
    NotificationCenter center;
    EKEventStore store(environment, center);
    EXPECT_EQ(store.authorizationStatus(EKEntityType::event), EKAuthorizationStatus::notDetermined);
    const auto add = [&](const char* name, std::filesystem::path location) {
        AccountsFile(environment).update([&](auto& accounts) {
            accounts.push_back({.name = name, .location = location});
        });
    };
    add("gone", environment.home / "gone");
    bool answer = true;
    store.requestFullAccessToEvents([&](bool granted, const std::exception_ptr&) { answer = granted; });
    EXPECT_FALSE(answer);
    EXPECT_EQ(store.authorizationStatus(EKEntityType::event), EKAuthorizationStatus::denied);
    EXPECT_EQ(store.report().at(0).problem, "there is no such file or folder");
    add("there", environment.home.write("a.ics", meeting("x")));
    store.requestFullAccessToReminders([&](bool granted, const std::exception_ptr&) { answer = granted; });
    EXPECT_TRUE(answer);
    EXPECT_EQ(store.report().at(1).collections.at(0).eventCount, 1u);
}

TEST(EKEventStore, DelegatedAccountsFormAStoreOfTheirOwn) {
    CalendarFixture fixture;
    fixture.write("a.ics", meeting("mine", "1"));
    fixture.account("Boss", fixture.environment.home.write("boss.ics", meeting("theirs", "1")), true);
    fixture.account("Feasts", fixture.environment.home.write("feasts.ics", meeting("feast", "2")), false,
                    Account::Kind::holidays);
    EXPECT_THAT(titles(fixture.store()), ElementsAre("Home", "Feasts"));
    EXPECT_TRUE(fixture.store().calendars(EKEntityType::event)[1]->isSubscribedHolidayCalendar);
    EKEventStore delegates(fixture.environment, fixture.center, fixture.store().delegateSources());
    EXPECT_THAT(titles(delegates), ElementsAre("Boss"));
    const auto calendar = delegates.calendars(EKEntityType::event)[0];
    EXPECT_TRUE(calendar->source->isDelegate);
    // Calendars of another store in the question are passed over.
    auto both = fixture.store().calendars(EKEntityType::event);
    both.push_back(calendar);
    EXPECT_EQ(
        delegates.events(delegates.predicateForEvents(test::at(dayStart), test::at(dayEnd), both)).size(),
        1u);
}

TEST(EKEventStore, EveryChangeIsSeenAndToldOnce) {
    CalendarFixture fixture;
    fixture.write("a.ics", meeting("before"));
    EXPECT_THAT(fixture.list(dayStart, dayEnd), ElementsAre("2026-03-04 09:00Z 0m before"));
    std::atomic<int> told = 0;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] { ++told; });
    const auto expectChange = [&](int times, const std::vector<std::string>& lines) {
        fixture.store().refreshSourcesIfNecessary();
        EXPECT_TRUE(eventually([&] { return told == times; })) << told;
        EXPECT_EQ(fixture.list(dayStart, dayEnd), lines);
    };
    expectChange(0, {"2026-03-04 09:00Z 0m before"});
    fixture.write("a.ics", meeting("behind"));  // In place, same size, perhaps the same time stamp.
    expectChange(1, {"2026-03-04 09:00Z 0m behind"});
    fixture.write("b.ics", meeting("second", "2"));
    fixture.store().refreshSourcesIfNecessary();
    EXPECT_TRUE(eventually([&] { return told == 2; }));
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

TEST(EKEventStore, WatchingNoticesFilesFoldersAndAccounts) {
    CalendarFixture fixture;
    fixture.write("a/a.ics", meeting("one"));
    std::atomic<int> told = 0;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] { ++told; });
    fixture.store().startWatching();
    const auto shows = [&](std::size_t count) {
        return eventually([&] { return fixture.list(dayStart, dayEnd).size() == count; });
    };
    EXPECT_TRUE(shows(1));
    fixture.write("a/b.ics", meeting("two", "2"));
    EXPECT_TRUE(shows(2));
    fixture.write("new/c.ics", meeting("three", "3"));
    EXPECT_TRUE(shows(3));
    fixture.write("new/d.ics", meeting("four", "4"));
    EXPECT_TRUE(shows(4)) << "a folder that came later is watched too";
    fixture.account("More", fixture.environment.home.write("more.ics", meeting("five", "5")));
    EXPECT_TRUE(shows(5));
    EXPECT_TRUE(eventually([&] { return told >= 4; }));
}

TEST(EKEventStore, WatchingNoticesEveryWayInWhichFilesChange) {
    CalendarFixture fixture;
    const auto folder = fixture.folder();
    fixture.write("a.ics", meeting("one"));
    std::atomic<int> told = 0;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] { ++told; });
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

    const int before = told;
    for (int i = 0; i < 100; ++i)
        fixture.write("burst" + std::to_string(i) + ".ics", meeting("more", "more" + std::to_string(i)));
    EXPECT_TRUE(eventually([&] { return fixture.list(dayStart, dayEnd).size() == 101; }));
    EXPECT_LT(told - before, 10) << "a hundred files are not told one by one";
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
                const auto found = fixture.store().events(
                    fixture.store().predicateForEvents(from, from.addingTimeInterval(86399), calendars));
                if (found.size() != 1 || found[0]->title->size() != 1) ++wrong;
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

TEST(EKEventStore, MayBeLetGoOfByWhatItTells) {
    CalendarFixture fixture;
    auto store = std::make_shared<EKEventStore>(fixture.environment, fixture.center);
    std::promise<void> released;
    std::atomic<bool> isTold = false;
    const auto observation = fixture.center.observe(eventStoreChangedNotification, [&] {
        released.get_future().wait();
        store.reset();
        isTold = true;
    });
    fixture.write("a.ics", meeting("one"));
    auto asking = store;
    EXPECT_THAT(titles(*asking), ElementsAre("Home"));
    fixture.write("a.ics", meeting("other"));
    asking->refreshSourcesIfNecessary();
    asking.reset();
    released.set_value();
    EXPECT_TRUE(eventually([&] { return isTold.load(); }));
    // What is left of it ends on the main queue.
    bool isDrained = false;
    MainQueue::shared().async([&] { isDrained = true; });
    EXPECT_TRUE(MainQueue::shared().runUntil([&] { return isDrained; }, 20));
}

TEST(EKEventStore, LaterQuestionsAgreeWithFreshOnes) {
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
    for (int i = 0; i < 40; ++i) {
        const auto from = test::at("2026-02-25T00:00:00Z").addingTimeInterval(i * 3.1 * 86400);
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
    }
}

TEST(AccountsFile, BadEntriesAreLeftOutAndABrokenFileIsSetAside) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    environment.home.write(
        "config/heedbanner/accounts.toml",
        "[[account]]\nname = \"Work\"\nlocation = \"~/cal\"\naddresses = [\"mailto:a@b.c\", \"d@e.f\"]\n"
        "kind = \"holidays\"\n[[account]]\nname = \"x\"\n[[account]]\nname = \"p\"\nlocation = \"/p\"\n"
        "contents = \"people\"\n[[account]]\nname = \"q\"\nlocation = \"/q\"\ndelegate = \"yes\"\n");
    const auto accounts = file.load();
    ASSERT_EQ(accounts.size(), 2u);
    EXPECT_EQ(accounts[0].location, environment.home / "cal");
    EXPECT_EQ(accounts[0].addresses, (std::vector<std::string>{"a@b.c", "d@e.f"}));
    EXPECT_EQ(accounts[0].kind, Account::Kind::holidays);
    std::vector<std::string> fields;
    for (const auto& diagnostic : environment.diagnostics->all())
        fields.push_back(diagnostic.field);
    EXPECT_THAT(fields, ElementsAre("account 2, location", "account 3, contents", "account 4, delegate"));

    ASSERT_TRUE(file.update([](auto& list) { list[1].isDelegate = true; }));
    EXPECT_TRUE(file.load()[1].isDelegate);
    EXPECT_EQ(std::filesystem::status(file.path()).permissions(), std::filesystem::perms(0600));

    environment.home.write("config/heedbanner/accounts.toml", "[[account\n");
    EXPECT_THAT(file.load(), IsEmpty());
    ASSERT_TRUE(file.update([](auto& list) { list.push_back({.name = "N", .location = "/n"}); }));
    EXPECT_EQ(file.load().size(), 1u);
    EXPECT_EQ(test::readFile(file.path().string() + ".unreadable-1"), "[[account\n");
}

TEST(AccountsFile, WritingKeepsWhatIsNotUnderstood) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    const std::string written =
        "# mine\nversion = 2\n\n[[account]]\nname = \"Work\"\nlocation = \"~/cal\"\nnote = \"hm\"\n\n"
        "[[account]]\nname = \"Later\"\ncontents = \"mails\"\nlocation = \"/later\"\n";
    environment.home.write("config/heedbanner/accounts.toml", written);
    const auto add = [](auto& list) {
        list.push_back({.name = "People", .location = "~/cal", .contents = Account::Contents::contacts});
    };
    ASSERT_TRUE(file.update(add));
    EXPECT_THAT(test::readFile(file.path()), testing::StartsWith(written));
    EXPECT_EQ(file.load().size(), 2u);
    ASSERT_TRUE(file.update([](auto& list) { list[0].name = "Desk"; }));
    ASSERT_TRUE(file.update([](auto& list) { list.erase(list.begin() + 1); }));
    const auto text = test::readFile(file.path());
    for (const char* kept : {"version = 2", "\"Desk\"", "note = ", "\"Later\"", "\"mails\""})
        EXPECT_THAT(text, testing::HasSubstr(kept)) << kept;
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("People")));

    environment.home.write("config/heedbanner/accounts.toml",
                           "account = [{name = \"A\", location = \"/a\"}]\n");
    ASSERT_TRUE(file.update(add));
    EXPECT_EQ(file.load().size(), 2u);
}

TEST(AccountsFile, RenamingAndRemovingKeepComments) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    environment.home.write(
        "config/heedbanner/accounts.toml",
        "# mine\n\n# old\n[[account]]\nname = \"A\"\nlocation = \"~/a\" # here\n\n"
        "[[account]]\nname = \"B\"\n\n# new\n[[account]]\nname = \"C\"\nlocation = \"/c\"\n");
    ASSERT_TRUE(file.update([](auto& list) {
        list[0].name = "Z";
        list[0].addresses = {"me@example.org"};
        list.erase(list.begin() + 1);
        list.push_back({.name = "D", .location = "/d"});
    }));
    EXPECT_EQ(test::readFile(file.path()),
              "# mine\n\n# old\n[[account]]\nname = \"Z\"\nlocation = \"~/a\" # here\n"
              "addresses = [ \"me@example.org\" ]\n\n[[account]]\nname = \"B\"\n\n"
              "[[account]]\nname = \"D\"\nlocation = \"/d\"\n");
    environment.home.write("config/heedbanner/accounts.toml",
                           "[[account]]\nname = \"A\"\nlocation = \"/a\"\n");
    ASSERT_TRUE(file.update([](auto& list) { list.clear(); }));
    EXPECT_FALSE(std::filesystem::exists(file.path()));
}

TEST(AccountsFile, WritersNeverLoseEachOthersAccounts) {
    test::TestEnvironment environment;
    {
        std::vector<std::jthread> writers;
        for (int t = 0; t < 4; ++t) {
            writers.emplace_back([&, t] {
                for (int i = 0; i < 5; ++i) {
                    AccountsFile(environment).update([&](auto& accounts) {
                        accounts.push_back({.name = std::to_string(t * 5 + i), .location = "/x"});
                    });
                }
            });
        }
    }
    EXPECT_EQ(AccountsFile(environment).load().size(), 20u);
}

}  // namespace
