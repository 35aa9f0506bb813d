#include "Journey.h"

#include <TimeAndText/Date.h>
#include <Values/PropertyValue.h>
#include <gmock/gmock.h>

#include <algorithm>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;

class FirstStart : public Journey {
  protected:
    const std::vector<std::string> setupExamples = {"setup", examples(), "--email", "me@example.org"};
    /// Settings and reminders as an installation before the shared domain left them.
    void writeOldSettings() const {
        platform::PropertyDictionary old;
        old.set("timeOffsetSeconds", 120);
        old.set("timeOffset", 7);
        old.set("includeTravelTime", true);
        old.set("defaultSnooze2", 9);
        old.set("customReminders",
                platform::dataOf(R"([{"id":"r1","date":1e9,"title":"Later","timeOffsetSeconds":0}])"));
        writeSettings(test::standardSettings, old);
    }
    void expectOldSettingsKept() const {
        const auto shared = readSettings(test::sharedSettings);
        const auto integer = [&](std::string_view key) {
            return shared.find(key) ? shared.find(key)->asInteger() : std::nullopt;
        };
        // The obsolete minutes win over the older seconds.
        EXPECT_EQ(integer("timeOffsetSeconds"), 420);
        EXPECT_EQ(integer("includeTravelTime"), 1);
        EXPECT_EQ(integer("defaultSnooze2"), 9);
        const auto* reminders = shared.find("customReminders");
        ASSERT_TRUE(reminders && reminders->asData());
        EXPECT_THAT(std::string(platform::textOf(*reminders->asData())), HasSubstr("Later"));
        const auto standard = readSettings(test::standardSettings);
        ASSERT_TRUE(standard.find("didMigrateToSharedDefaults"));
        EXPECT_EQ(standard.find("didMigrateToSharedDefaults")->asBool(), true);
    }
};

TEST_F(FirstStart, TheExamplesAlwaysHaveSomethingUnderWayAndSomethingWithinHours) {
    const auto setup = companion(setupExamples);
    ASSERT_EQ(setup.exitCode, 0) << setup.err;
    EXPECT_EQ(setup.err, "");
    const auto begin = platform::parseRfc3339("2026-11-20T00:20:00Z").value();
    for (int i = 0; i < 16; ++i) {
        const auto moment = begin.addingTimeInterval(i * 4.75 * 3600);
        const std::string now = platform::formatRfc3339(moment);
        variables["TZ"] = i % 2 == 0 ? "America/Los_Angeles" : "Asia/Tokyo";
        const auto agenda = json(companion({"agenda", "--json", "--now", now}));
        bool isUnderWay = false;
        bool comesSoon = false;
        for (const auto& event : *agenda.asArray()) {
            const auto start = platform::parseRfc3339(*event.find("startDate")->asString()).value();
            isUnderWay = isUnderWay || *event.find("state")->asString() == "current";
            const double distance = start.timeIntervalSince(moment);
            comesSoon = comesSoon || (distance > 0 && distance < 3 * 3600);
        }
        EXPECT_TRUE(isUnderWay && comesSoon) << now;
    }
}

TEST_F(FirstStart, TheAgendaShowsWhatTheWidgetsDraw) {
    companion(setupExamples);
    // A Wednesday, 10:50 in Berlin.
    currentTime = "2026-11-25T09:50:00Z";
    const auto before = test::readFile(configFile(test::sharedSettings));
    expectEach(
        {{"agenda --days 0",
          0,
          {"Under way\n", "▶", "On call: Berlin desk", "🍜 Lunch with the team",
           "Microsoft Teams https://teams.microsoft.com/l/meetup-join/", "!Vendor pitch", "!Budget round",
           "!\x1b["}},
         {"heedbanner-widgets render upcoming --family large --format text", 0, {"🍜 Lunch with the team"}},
         {"heedbanner-widgets render countdown -o ~/countdown.png"}});
    EXPECT_EQ(test::readFile(home / "countdown.png").substr(1, 3), "PNG");
    // More days than the settings say, which stay as they are.
    EXPECT_GT(valueAt(ask("agenda --days 20"), "last/startDate"), "2026-12-14");
    EXPECT_EQ(test::readFile(configFile(test::sharedSettings)), before);
}

TEST_F(FirstStart, ASecondSetupChangesNothingAndUndoTakesTheFirstBack) {
    companion(setupExamples);
    const auto accounts = test::readFile(configFile("accounts.toml"));
    const auto settings = test::readFile(configFile(test::sharedSettings));
    expectEach({{"calendars deactivate Personal"}, {"calendars activate Personal"}});
    const auto changed = test::readFile(configFile(test::sharedSettings));
    EXPECT_THAT(companion(setupExamples).out, HasSubstr("already there"));
    EXPECT_EQ(test::readFile(configFile("accounts.toml")), accounts);
    EXPECT_EQ(test::readFile(configFile(test::sharedSettings)), changed);

    expectEach({{"setup --undo"}, {"accounts list --json", 0, {"=[]\n"}}});
    EXPECT_TRUE(readSettings(test::sharedSettings).find("activeCalendarIdentifiers")->asArray()->empty());
    companion(setupExamples);
    EXPECT_EQ(test::readFile(configFile(test::sharedSettings)), settings);
}

TEST_F(FirstStart, OldSettingsAndRemindersSurviveWhicheverProgramComesFirst) {
    std::vector<const char*> programs = {"settings list", "heedbanner-widgets timeline upcoming --json"};
    for (int round = 0; round < 2; ++round) {
        std::filesystem::remove_all(home / "config");
        writeOldSettings();
        for (const char* program : programs)
            expect(program);
        expectOldSettingsKept();
        std::ranges::reverse(programs);
    }
}

TEST_F(FirstStart, OldSettingsAndRemindersSurviveProgramsStartedAtTheSameTime) {
    for (int round = 0; round < 5; ++round) {
        std::filesystem::remove_all(home / "config");
        writeOldSettings();
        const auto outcomes = runTogether({{"heedbanner-widgets", {"timeline", "upcoming", "--json"}},
                                           {"heedbanner", {"settings", "set", "customSnoozeTimes", "3,4"}},
                                           {"heedbanner-widgets", {"timeline", "current", "--json"}},
                                           {"heedbanner", setupExamples}});
        for (const auto& outcome : outcomes)
            EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        expectOldSettingsKept();
        const auto shared = readSettings(test::sharedSettings);
        ASSERT_TRUE(shared.find("activeCalendarIdentifiers"));
        EXPECT_EQ(shared.find("activeCalendarIdentifiers")->asArray()->size(), 4u);
        ASSERT_TRUE(shared.find("customSnoozeTimes"));
        EXPECT_EQ(shared.find("customSnoozeTimes")->asIntegers(), (std::vector<std::int64_t>{3, 4}));
    }
}

}  // namespace
