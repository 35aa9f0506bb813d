#include "Journey.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <set>
#include <thread>

namespace {

using ::test::Journey;

class Choices : public Journey {
  protected:
    void SetUp() override {
        // A Wednesday, 10:50 in Berlin.
        currentTime = "2026-11-25T09:50:00Z";
        home.write("cal/team.ics", test::oneEvent("Standup", "20261125T100000Z", "20261125T101500Z"));
        home.write("cal/lunch.ics", test::oneEvent("Lunch", "20261125T110000Z", "20261125T120000Z"));
        expect("setup ~/cal");
    }

    std::multiset<std::string> reminders() {
        const auto titles = valuesAt(ask("reminders list --all"), "title");
        return {titles.begin(), titles.end()};
    }

    const std::string upcoming = "heedbanner-widgets render upcoming --family large --format text";
};

TEST_F(Choices, AnOwnReminderIsShownMovedAndGone) {
    expectEach({{"remind Call Anna --at today 15:00",
                 0,
                 {"=Wednesday, November 25, 2026 at 3:00\u202FPM (in 4 hours): Call Anna\n"}},
                {upcoming, 0, {"Call Anna"}},
                {"remind --in 20m Tea"},
                {"reminders edit anna --at 'tomorrow 9:00'", 0, {"Thursday, November 26, 2026 at 9:00"}}});
    variables["LANG"] = "de_DE.UTF-8";
    expect("remind Anrufen --at 'übermorgen um 14 Uhr 30' --lead 10m", {"Freitag, 27. November 2026"});
    variables["LANG"] = "C.UTF-8";
    const auto list = ask("reminders list");
    EXPECT_EQ(list.asArray()->size(), 3u);
    EXPECT_EQ(valueAt(list, "1/date"), "2026-11-26T08:00:00.000Z");
    EXPECT_EQ(valueAt(list, "2/timeOffsetSeconds"), "600");
    expectEach({{"reminders remove a", 3, {"Tea"}},
                {"reminders remove anna tea nothing", 3},
                {"reminders remove anna tea"}});
    EXPECT_EQ(reminders(), std::multiset<std::string>{"Anrufen"});
}

TEST_F(Choices, AReminderThatWouldNeverComeIsNotMade) {
    expectEach({{"remind X", 2, {"remind: when?"}},
                {"remind --in 5m", 2, {"what should it say?"}},
                {"remind ' ' --in 5m", 2, {"what should it say?"}},
                {"remind X --at 9:00", 2, {"today is in the past"}},
                {"remind X --in 5m --lead 10m", 2, {"choose a shorter lead"}},
                {"remind X --in 5m --at 15:00", 2, {"--at"}},
                {"remind X --in 'tomorrow 9:00'", 2, {"not a length of time"}}});
    EXPECT_TRUE(reminders().empty());
}

TEST_F(Choices, ARuleIsTestedThenLeavesOutThenIsRemoved) {
    const std::string lunch = " title 'begins with' lun --ignore-case";
    expectEach({{"rules test" + lunch, 0, {"Lunch", "1 of 2"}},
                {upcoming, 0, {"Lunch"}},
                {"rules add" + lunch},
                {"rules add" + lunch, 0, {"already there"}},
                {upcoming, 0, {"!Lunch", "Standup"}},
                {"rules add date wed"},
                {upcoming, 0, {"!Standup"}}});
    EXPECT_EQ(valuesAt(ask("rules list"), "value"), (std::vector<std::string>{"lun", "4"}));
    expectEach({{"rules remove 2 1"},
                {upcoming, 0, {"Lunch"}},
                {"rules add titel contains x", 2, {"did you mean \"title\"?"}},
                {"rules add title startsWith x", 2, {"beginsWith"}},
                {"rules add title isOnDayOfWeek 1", 2, {"not a comparison for title"}},
                {"rules add date contains 1", 2, {"\"contains\" is not a day of the week"}},
                {"rules add date isOnDayOfWeek 1,8", 2, {"\"8\" is not a day of the week"}},
                {"rules add title contains ''", 2, {"the value is missing"}},
                {"rules add title matches (a", 2, {"would never match"}}});
}

TEST_F(Choices, AnEventHasSettingsOfItsOwnUntilTheyAreReset) {
    const std::string start = "20261125T130000Z", end = "20261125T140000Z";
    home.write(
        "cal/call.ics",
        test::oneEvent("Review", start, end,
                       "DESCRIPTION:https://zoom.us/j/111 or https://meet.google.com/abc-defg-hij\r\n"));
    home.write("cal/off.ics", test::oneEvent("Called off", start, end, "STATUS:CANCELLED\r\n"));
    expectEach({{"event show review",
                 0,
                 {"as for every event", "none is chosen", "2. Google Meet", "!none is planned"}},
                {"event show 'called off'", 0, {"none is planned: it was cancelled"}},
                {"event set review --link https", 3},
                {"event set review --link https://example.org", 3},
                {"event set review --lead 25h", 2},
                {"event set review", 2},
                {"event set nothing --exclude", 3},
                {"event set review --lead 90m --link meet", 0, {"over an hour"}}});
    const auto record = ask("event show review");
    EXPECT_EQ(valueAt(record, "alertDate"), "2026-11-25T11:30:00.000Z");
    EXPECT_EQ(valueAt(record, "defaultConferenceUrl"), "https://meet.google.com/abc-defg-hij");
    expectEach(
        {{"event set standup --exclude", 0, {"yes, you chose that"}}, {upcoming, 0, {"!Standup", "Review"}}});
    // Both at once change different fields of the same record.
    const std::string id = valueAt(record, "event/id");
    for (const auto& outcome :
         runTogether({{"heedbanner", {"event", "set", id, "--exclude", "--now", currentTime}},
                      {"heedbanner", {"event", "set", id, "--link", "1", "--now", currentTime}},
                      {"heedbanner", {"event", "set", id, "--lead", "5m", "--now", currentTime}}}))
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    const auto settings = ask("event show " + id);
    EXPECT_EQ(valueAt(settings, "settings/isExcluded"), "true");
    EXPECT_EQ(valueAt(settings, "settings/timeOffsetSeconds"), "300");
    EXPECT_EQ(valueAt(settings, "settings/defaultConferenceUrl"), "https://zoom.us/j/111");
    EXPECT_EQ(valueAt(settings, "alertDate"), "none");

    // One occurrence of a series by itself.
    home.write("cal/daily.ics", test::oneEvent("Daily", "20261125T150000Z", "20261125T160000Z",
                                               "RRULE:FREQ=DAILY;COUNT=3\r\n"));
    expectEach({{"event set daily --exclude --on soon", 2},
                {"event set daily --on 2026-11-26", 2},
                {"event set standup --exclude --on 2026-11-25", 2, {"does not recur"}},
                {"event set daily --exclude --on '2026-11-26 15:30'", 3, {"; there are:"}},
                {"event set daily --include --on 2026-11-26", 3, {"no left out occurrence"}},
                {"event set daily --exclude --on 2026-11-26", 0, {"Occurrences that you left out"}},
                {"why daily --day 2026-11-26", 0, {"--include --on 2026-11-26T15:00:00.000Z"}}});
    const auto listed = [&] {
        const auto titles = valuesAt(ask("agenda --days 3"), "title");
        return std::ranges::count(titles, "Daily");
    };
    EXPECT_EQ(listed(), 2);
    EXPECT_EQ(valueAt(ask("event show daily"), "hiddenOccurrences/0"), "2026-11-26T15:00:00.000Z");
    expect("event set daily --include --on 2026-11-26T15:00:00.000Z");
    EXPECT_EQ(valueAt(ask("event show daily"), "hiddenOccurrences"), "none");
    EXPECT_EQ(listed(), 3);

    // Also when the event is gone.
    std::filesystem::remove(home / "cal/call.ics");
    expectEach({{"event reset " + id}, {"event reset standup"}, {upcoming, 0, {"Standup"}}});
    EXPECT_TRUE(readSettings(test::sharedSettings).find("eventSettings")->asDictionary()->empty());
    expectEach({{"remind Tea --in 20m"}, {"event set tea --lead 5m", 2, {"reminders edit"}}});
}

TEST_F(Choices, DataThatCannotBeReadIsNamedAndNotReplacedByNewData) {
    struct Case {
        const char *key, *damaged, *message, *reset, *add;
        std::vector<const char*> refused;
    };
    const Case cases[] = {{"excludeRules",
                           R"([{"id":"1","field":"title"}])",
                           "settings reset excludeRules",
                           "settings reset excludeRules",
                           "rules add title contains x",
                           {"rules add title contains x", "rules remove --all", "rules list"}},
                          {"customReminders",
                           R"([{"id":"1","date":1e9,"timeOffsetSeconds":0},{"id":"2"}])",
                           "customReminders",
                           "reminders remove --all",
                           "remind Tea --in 5m",
                           {"remind Tea --in 5m", "reminders remove --past", "reminders list", "doctor"}}};
    for (const Case& c : cases) {
        auto settings = readSettings(test::sharedSettings);
        settings.set(c.key, platform::dataOf(c.damaged));
        writeSettings(test::sharedSettings, settings);
        for (const char* command : c.refused)
            expect(command, 1, {c.message});
        EXPECT_EQ(*readSettings(test::sharedSettings).find(c.key)->asData(), platform::dataOf(c.damaged));
        expectEach({{c.reset}, {c.add}});
    }
}

TEST_F(Choices, AnImportTakesEverythingOrNothing) {
    expectEach({{"settings set timeOffsetSeconds 1h30"},
                {"rules add title contains Lunch"},
                {"settings export ~/all.json"}});
    const auto exported = type("settings export").out;
    expect("settings reset --all");
    EXPECT_NE(type("settings export").out, exported);
    const auto before = test::readFile(configFile(test::sharedSettings));
    for (const char* wrong : {R"({"defaultSnooze1": 3, "keyboardShortcutsDelay": 61})",
                              R"({"defaultSnooze1": 3, "nonsense": 1})", "[1]", "{"}) {
        home.write("wrong.json", wrong);
        expect("settings import ~/wrong.json", 1);
        EXPECT_EQ(test::readFile(configFile(test::sharedSettings)), before) << wrong;
    }
    expectEach({{"settings import ~/all.json"}, {"settings export", 0, {"=" + exported}}});
}

TEST_F(Choices, ProgramsThatWriteAtTheSameTimeLoseNothing) {
    // The others too go by the machine's clock.
    currentTime.clear();
    std::vector<std::pair<std::string, Arguments>> programs = {
        {"heedbanner", {"settings", "set", "timeOffsetSeconds", "120"}},
        {"heedbanner", {"settings", "set", "keyboardShortcutsDelay", "7"}},
        {"heedbanner", {"calendars", "deactivate", "--all"}}};
    std::multiset<std::string> titles;
    for (int i = 0; i < 8; ++i) {
        const std::string name = "reminder " + std::to_string(i);
        titles.insert(name);
        programs.push_back({"heedbanner", {"remind", name, "--in", "2h"}});
        programs.push_back({"heedbanner", {"rules", "add", "title", "contains", name}});
        // A reload purges old reminders.
        programs.push_back({"heedbanner-widgets", {"timeline", "upcoming", "--json"}});
    }
    for (const auto& outcome : runTogether(programs))
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(reminders(), titles);
    EXPECT_EQ(ask("rules list").asArray()->size(), 8u);
    expectEach({{"settings get timeOffsetSeconds", 0, {"=120\n"}},
                {"settings get keyboardShortcutsDelay", 0, {"=7\n"}},
                {"settings get activeCalendarIdentifiers", 0, {"=\n"}}});
}

TEST_F(Choices, AHundredWritersKilledAtAnyMomentLoseNothingThatTheyAcknowledged) {
    currentTime.clear();
    const auto begin = std::chrono::steady_clock::now();
    companion({"remind", "first", "--in", "2h"});
    const std::chrono::duration<double> lifetime = std::chrono::steady_clock::now() - begin;

    std::mt19937 random(20261125);
    std::uniform_real_distribution<double> part(0, 3);
    std::multiset<std::string> acknowledged = {"first"};
    constexpr int rounds = 25;
    constexpr int together = 4;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::pair<std::string, Started>> writers;
        for (int i = 0; i < together; ++i) {
            const std::string name = std::to_string(round) + "/" + std::to_string(i);
            writers.emplace_back(name, start("heedbanner", {"remind", name, "--in", "2h"}));
        }
        // The moment of the kill; one of them may end by itself.
        std::this_thread::sleep_for(lifetime * part(random));
        for (int i = 1; i < together; ++i)
            kill(writers[static_cast<std::size_t>(i)].second.process, SIGKILL);
        for (const auto& [name, writer] : writers) {
            const auto outcome = finish(writer);
            if (outcome.out.ends_with(name + "\n")) acknowledged.insert(name);
        }
    }
    const auto stored = reminders();
    EXPECT_TRUE(std::ranges::includes(stored, acknowledged));
    EXPECT_GE(acknowledged.size(), static_cast<std::size_t>(rounds));
    const std::set<std::string> distinct(stored.begin(), stored.end());
    EXPECT_EQ(distinct.size(), stored.size());
    expect("doctor");
}

}  // namespace
