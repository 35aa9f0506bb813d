#include "Journey.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <random>
#include <set>
#include <thread>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;
using ::testing::Not;

class Choices : public Journey {
  protected:
    void SetUp() override {
        home.write("cal/team.ics", test::oneEvent("Standup", "20261125T100000Z", "20261125T101500Z"));
        home.write("cal/lunch.ics", test::oneEvent("Lunch", "20261125T110000Z", "20261125T120000Z"));
        ASSERT_EQ(companion({"setup", home / "cal"}).exitCode, 0);
    }

    /// The texts of the upcoming widget at `now`.
    std::string upcoming() {
        return widgets({"render", "upcoming", "--family", "large", "--format", "text", "--now", now}).out;
    }
    std::multiset<std::string> remindersTitles() {
        std::multiset<std::string> titles;
        const auto list = json(companion({"reminders", "list", "--all", "--json"}));
        for (const auto& one : *list.asArray())
            titles.insert(*one.find("title")->asString());
        return titles;
    }

    /// A Wednesday, 10:50 in Berlin.
    const std::string now = "2026-11-25T09:50:00Z";
};

TEST_F(Choices, AnOwnReminderIsShownMovedAndGone) {
    const auto made = companion({"remind", "Call", "Anna", "--at", "today", "15:00", "--now", now});
    EXPECT_EQ(made.exitCode, 0) << made.err;
    EXPECT_EQ(made.out, "Wednesday, November 25, 2026 at 3:00\u202FPM (in 4 hours): Call Anna\n");
    EXPECT_THAT(upcoming(), HasSubstr("Call Anna"));
    EXPECT_EQ(companion({"remind", "--in", "20m", "Tea", "--now", now}).exitCode, 0);

    const auto moved = companion({"reminders", "edit", "anna", "--at", "tomorrow 9:00", "--now", now});
    EXPECT_THAT(moved.out, HasSubstr("Thursday, November 26, 2026 at 9:00"));
    variables["LANG"] = "de_DE.UTF-8";
    const auto german =
        companion({"remind", "Anrufen", "--at", "übermorgen um 14 Uhr 30", "--lead", "10m", "--now", now});
    EXPECT_THAT(german.out, HasSubstr("Freitag, 27. November 2026"));
    variables["LANG"] = "C.UTF-8";
    const auto list = json(companion({"reminders", "list", "--json", "--now", now}));
    ASSERT_EQ(list.asArray()->size(), 3u);
    EXPECT_EQ(*list.asArray()->at(1).find("date")->asString(), "2026-11-26T08:00:00.000Z");
    EXPECT_EQ(list.asArray()->at(2).find("timeOffsetSeconds")->asInteger(), 600);

    const auto several = companion({"reminders", "remove", "a", "--now", now});
    EXPECT_EQ(several.exitCode, 3);
    EXPECT_THAT(several.err, HasSubstr("Tea"));
    EXPECT_EQ(companion({"reminders", "remove", "anna", "tea", "nothing", "--now", now}).exitCode, 3);
    EXPECT_EQ(companion({"reminders", "remove", "anna", "tea", "--now", now}).exitCode, 0);
    EXPECT_EQ(remindersTitles(), std::multiset<std::string>{"Anrufen"});
}

TEST_F(Choices, AReminderThatWouldNeverComeIsNotMade) {
    const std::pair<Arguments, const char*> cases[] = {
        {{"remind", "X"}, "say when"},
        {{"remind", "--in", "5m"}, "say what of"},
        {{"remind", " ", "--in", "5m"}, "say what of"},
        {{"remind", "X", "--at", "9:00"}, "today is past"},
        {{"remind", "X", "--at", "12/1/2026", "8:00"}, "type 2026-12-01 or 2026-01-12"},
        {{"remind", "X", "--at", "2026-11-25T09:49:59Z"}, "is past"},
        {{"remind", "X", "--in", "5m", "--lead", "10m"}, "take a shorter lead"},
        {{"remind", "X", "--in", "5m", "--at", "15:00"}, "--at"},
        {{"remind", "X", "--in", "tomorrow 9:00"}, "no length of time"}};
    for (const auto& [arguments, reason] : cases) {
        auto command = arguments;
        command.insert(command.end(), {"--now", now});
        const auto refused = companion(command);
        EXPECT_EQ(refused.exitCode, 2) << reason;
        EXPECT_THAT(refused.err, HasSubstr(reason));
        EXPECT_EQ(refused.out, "");
    }
    EXPECT_TRUE(remindersTitles().empty());
}

TEST_F(Choices, ARuleIsTestedThenLeavesOutThenIsRemoved) {
    const Arguments lunch = {"title", "begins with", "lun", "--ignore-case"};
    const auto with = [&](Arguments start) {
        start.insert(start.end(), lunch.begin(), lunch.end());
        start.insert(start.end(), {"--now", now});
        return start;
    };
    const auto tested = companion(with({"rules", "test"}));
    EXPECT_THAT(tested.out, HasSubstr("Lunch"));
    EXPECT_THAT(tested.err, HasSubstr("1 of 2"));
    EXPECT_THAT(upcoming(), HasSubstr("Lunch"));
    EXPECT_EQ(companion(with({"rules", "add"})).exitCode, 0);
    EXPECT_THAT(companion(with({"rules", "add"})).out, HasSubstr("was there already"));
    EXPECT_THAT(upcoming(), Not(HasSubstr("Lunch")));
    EXPECT_THAT(upcoming(), HasSubstr("Standup"));
    EXPECT_EQ(companion({"rules", "add", "date", "wed"}).exitCode, 0);
    EXPECT_THAT(upcoming(), Not(HasSubstr("Standup")));
    const auto rules = json(companion({"rules", "list", "--json"}));
    ASSERT_EQ(rules.asArray()->size(), 2u);
    EXPECT_EQ(*rules.asArray()->at(1).find("value")->asString(), "4");
    EXPECT_EQ(companion({"rules", "remove", "2", "1"}).exitCode, 0);
    EXPECT_THAT(upcoming(), HasSubstr("Lunch"));

    const std::pair<Arguments, const char*> wrong[] = {
        {{"titel", "contains", "x"}, "did you mean \"title\"?"},
        {{"title", "startsWith", "x"}, "beginsWith"},
        {{"title", "isOnDayOfWeek", "1"}, "no comparison for title"},
        {{"date", "contains", "1"}, "\"contains\" is no day of the week"},
        {{"date", "isOnDayOfWeek", "1,8"}, "\"8\" is no day of the week"},
        {{"title", "contains", ""}, "the value is missing"},
        {{"title", "matches", "(a"}, "would never match"}};
    for (const auto& [arguments, reason] : wrong) {
        auto command = arguments;
        command.insert(command.begin(), {"rules", "add"});
        const auto refused = companion(command);
        EXPECT_EQ(refused.exitCode, 2) << reason;
        EXPECT_THAT(refused.err, HasSubstr(reason));
    }
}

TEST_F(Choices, AnEventHasSettingsOfItsOwnUntilTheyAreReset) {
    home.write(
        "cal/call.ics",
        test::oneEvent("Review", "20261125T130000Z", "20261125T140000Z",
                       "DESCRIPTION:https://zoom.us/j/111 or https://meet.google.com/abc-defg-hij\r\n"));
    const auto event = [&](Arguments arguments) {
        arguments.insert(arguments.begin(), "event");
        arguments.insert(arguments.end(), {"--now", now});
        return companion(arguments);
    };
    const auto shown = event({"show", "review"});
    EXPECT_EQ(shown.exitCode, 0) << shown.err;
    EXPECT_THAT(shown.out, HasSubstr("as for every event"));
    EXPECT_THAT(shown.out, HasSubstr("none is chosen"));
    EXPECT_THAT(shown.out, HasSubstr("2. Google Meet"));
    EXPECT_THAT(shown.out, Not(HasSubstr("none is planned")));
    home.write("cal/off.ics",
               test::oneEvent("Called off", "20261125T130000Z", "20261125T140000Z", "STATUS:CANCELLED\r\n"));
    EXPECT_THAT(event({"show", "called off"}).out, HasSubstr("none is planned: it was cancelled"));

    EXPECT_EQ(event({"set", "review", "--link", "https"}).exitCode, 3);
    EXPECT_EQ(event({"set", "review", "--link", "https://example.org"}).exitCode, 3);
    EXPECT_EQ(event({"set", "review", "--lead", "25h"}).exitCode, 2);
    EXPECT_EQ(event({"set", "review"}).exitCode, 2);
    EXPECT_EQ(event({"set", "nothing", "--exclude"}).exitCode, 3);
    const auto long_ = event({"set", "review", "--lead", "90m", "--link", "meet"});
    EXPECT_EQ(long_.exitCode, 0) << long_.err;
    EXPECT_THAT(long_.err, HasSubstr("over an hour"));
    const auto record = json(event({"show", "review", "--json"}));
    EXPECT_EQ(*record.find("alertDate")->asString(), "2026-11-25T11:30:00.000Z");
    EXPECT_EQ(*record.find("defaultConferenceUrl")->asString(), "https://meet.google.com/abc-defg-hij");

    EXPECT_THAT(event({"set", "standup", "--exclude"}).out, HasSubstr("yes, by your choice"));
    EXPECT_THAT(upcoming(), Not(HasSubstr("Standup")));
    EXPECT_THAT(upcoming(), HasSubstr("Review"));
    // Both at once change different fields of the same record.
    const std::string id = *record.find("event")->find("id")->asString();
    for (const auto& outcome :
         runTogether({{"heedbanner", {"event", "set", id, "--exclude", "--now", now}},
                      {"heedbanner", {"event", "set", id, "--link", "1", "--now", now}},
                      {"heedbanner", {"event", "set", id, "--lead", "5m", "--now", now}}}))
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    const auto settings = json(event({"show", id, "--json"}));
    const auto* own = settings.find("settings");
    ASSERT_TRUE(own);
    EXPECT_EQ(*own->find("isExcluded")->asBool(), true);
    EXPECT_EQ(own->find("timeOffsetSeconds")->asInteger(), 300);
    EXPECT_EQ(*own->find("defaultConferenceUrl")->asString(), "https://zoom.us/j/111");
    EXPECT_FALSE(settings.find("alertDate"));

    // Also when the event is gone.
    std::filesystem::remove(home / "cal/call.ics");
    EXPECT_EQ(event({"reset", id}).exitCode, 0);
    EXPECT_EQ(event({"reset", "standup"}).exitCode, 0);
    EXPECT_THAT(upcoming(), HasSubstr("Standup"));
    EXPECT_TRUE(readSettings(test::sharedSettings).find("eventSettings")->asDictionary()->empty());

    EXPECT_EQ(companion({"remind", "Tea", "--in", "20m", "--now", now}).exitCode, 0);
    const auto reminder = event({"set", "tea", "--lead", "5m"});
    EXPECT_EQ(reminder.exitCode, 2);
    EXPECT_THAT(reminder.err, HasSubstr("reminders edit"));
}

TEST_F(Choices, RulesThatCannotBeReadAreNotReplacedByANewOne) {
    auto settings = readSettings(test::sharedSettings);
    const auto damaged = platform::dataOf(R"([{"id":"1","field":"title"}])");
    settings.set("excludeRules", damaged);
    writeSettings(test::sharedSettings, settings);
    for (const Arguments& arguments : {Arguments{"rules", "add", "title", "contains", "x"},
                                       Arguments{"rules", "remove", "--all"}, Arguments{"rules", "list"}}) {
        const auto refused = companion(arguments);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, HasSubstr("settings reset excludeRules"));
    }
    EXPECT_EQ(*readSettings(test::sharedSettings).find("excludeRules")->asData(), damaged);
    EXPECT_EQ(companion({"settings", "reset", "excludeRules"}).exitCode, 0);
    EXPECT_EQ(companion({"rules", "add", "title", "contains", "x"}).exitCode, 0);
}

TEST_F(Choices, RemindersThatCannotBeReadAreToldAndNotReplacedByANewOne) {
    auto settings = readSettings(test::sharedSettings);
    const auto damaged = platform::dataOf(R"([{"id":"1","date":1e9,"timeOffsetSeconds":0},{"id":"2"}])");
    settings.set("customReminders", damaged);
    writeSettings(test::sharedSettings, settings);
    for (const Arguments& arguments :
         {Arguments{"remind", "Tea", "--in", "5m"}, Arguments{"reminders", "remove", "--past"},
          Arguments{"reminders", "list"}, Arguments{"doctor"}}) {
        const auto refused = companion(arguments);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.out + refused.err, HasSubstr("customReminders"));
    }
    EXPECT_EQ(*readSettings(test::sharedSettings).find("customReminders")->asData(), damaged);
    EXPECT_EQ(companion({"reminders", "remove", "--all"}).exitCode, 0);
    EXPECT_EQ(companion({"remind", "Tea", "--in", "5m"}).exitCode, 0);
}

TEST_F(Choices, AnImportTakesEverythingOrNothing) {
    ASSERT_EQ(companion({"settings", "set", "timeOffsetSeconds", "1h30"}).exitCode, 0);
    ASSERT_EQ(companion({"rules", "add", "title", "contains", "Lunch"}).exitCode, 0);
    ASSERT_EQ(companion({"settings", "export", home / "all.json"}).exitCode, 0);
    const auto exported = companion({"settings", "export"}).out;
    ASSERT_EQ(companion({"settings", "reset", "--all"}).exitCode, 0);
    EXPECT_NE(companion({"settings", "export"}).out, exported);
    const auto before = test::readFile(configFile(test::sharedSettings));
    for (const char* wrong : {R"({"defaultSnooze1": 3, "keyboardShortcutsDelay": 61})",
                              R"({"defaultSnooze1": 3, "nonsense": 1})", "[1]", "{"}) {
        const auto refused = companion({"settings", "import", home.write("wrong.json", wrong)});
        EXPECT_EQ(refused.exitCode, 1) << wrong;
        EXPECT_EQ(test::readFile(configFile(test::sharedSettings)), before) << wrong;
    }
    EXPECT_EQ(companion({"settings", "import", home / "all.json"}).exitCode, 0);
    EXPECT_EQ(companion({"settings", "export"}).out, exported);
}

TEST_F(Choices, ProgramsThatWriteAtTheSameTimeLoseNothing) {
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
    EXPECT_EQ(remindersTitles(), titles);
    EXPECT_EQ(json(companion({"rules", "list", "--json"})).asArray()->size(), 8u);
    EXPECT_EQ(companion({"settings", "get", "timeOffsetSeconds"}).out, "120\n");
    EXPECT_EQ(companion({"settings", "get", "keyboardShortcutsDelay"}).out, "7\n");
    EXPECT_EQ(companion({"settings", "get", "activeCalendarIdentifiers"}).out, "\n");
}

TEST_F(Choices, AHundredWritersKilledAtAnyMomentLoseNothingThatTheyAcknowledged) {
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
    const auto stored = remindersTitles();
    EXPECT_TRUE(std::ranges::includes(stored, acknowledged));
    EXPECT_GE(acknowledged.size(), static_cast<std::size_t>(rounds));
    const std::set<std::string> distinct(stored.begin(), stored.end());
    EXPECT_EQ(distinct.size(), stored.size());
    EXPECT_EQ(companion({"doctor"}).exitCode, 0);
}

}  // namespace
