#include "Journey.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using ::test::oneEvent;

class Why : public test::Journey {
  protected:
    /// A Wednesday, 10:00 in Berlin.
    Why() { currentTime = "2026-03-04T09:00:00Z"; }

    /// A command as it is printed.
    test::Outcome shell(const std::string& command) {
        variables["PATH"] = programs() + ":/usr/bin:/bin";
        return run("/bin/sh", {"-c", command + " --now " + currentTime});
    }
    bool isInAgenda(const std::string& title) {
        const auto titles = valuesAt(ask("agenda"), "title");
        return std::ranges::find(titles, title) != titles.end();
    }
    static std::string task(const std::string& title, const std::string& lines) {
        return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VTODO\r\nUID:" + title + "\r\nSUMMARY:" + title +
               "\r\n" + lines + "END:VTODO\r\nEND:VCALENDAR\r\n";
    }
    /// "RULE" or "RULE: COMMAND" of each rule that hides the event.
    static std::vector<std::string> causes(const platform::JsonValue& explanation) {
        std::vector<std::string> list;
        for (const auto& rule : *explanation.find("rules")->asArray()) {
            if (valueAt(rule, "decision") != "hides") continue;
            const std::string command = valueAt(rule, "command");
            list.push_back(valueAt(rule, "rule") + (command == "none" ? "" : ": " + command));
        }
        return list;
    }
};

TEST_F(Why, EachCauseIsNamedAndItsCommandMakesTheEventAppear) {
    const std::string noon = "20260304T110000Z";
    const std::string visit = oneEvent("Visit", noon, "");
    const std::string todo = task("Visit", "DUE:" + noon + "\r\n");
    struct Case {
        std::string content;
        std::vector<std::string> choices;
        /// "ID" is replaced by the event's identifier.
        std::vector<std::string> causes;
    };
    const Case cases[] = {
        {todo,
         {"reminder-lists deactivate 'My cal'"},
         {"calendar: heedbanner reminder-lists activate \"My cal/My cal\""}},
        {visit,
         {"settings set showOnlyEventsWithAlert true"},
         {"alarm: heedbanner settings set showOnlyEventsWithAlert false"}},
        {oneEvent("Visit", "20260320T110000Z", ""),
         {},
         {"days: heedbanner settings set upcomingEventsDaysFilter 16"}},
        {visit,
         {"rules add title contains nothing", "rules add title contains Vis", "rules add date wed"},
         {"excludeRules: heedbanner rules remove 2 3"}},
        {todo, {"event set Visit --exclude"}, {"exclusion: heedbanner event set ID --include"}},
        {visit, {"event set Visit --lead 3h"}, {"lead: heedbanner event set ID --lead 1h"}},
        {"",
         {"remind Visit --in 2h --lead 105m --now 2026-03-04T08:30:00Z"},
         {"lead: heedbanner reminders edit ID --lead 0"}},
        {visit,
         {"settings set debugScreenshotMode true"},
         {"screenshotMode: heedbanner settings set debugScreenshotMode false"}},
        {visit,
         {"rules add title contains Vis", "calendars deactivate --all"},
         {"calendar: heedbanner calendars activate \"My cal/My cal\"",
          "excludeRules: heedbanner rules remove 1"}},
        // What no command changes.
        {oneEvent("Visit", noon, "", "ATTENDEE;PARTSTAT=DECLINED:mailto:me@example.org\r\n"), {}, {"answer"}},
        {task("Visit", ""), {}, {"dueDate"}},
        {oneEvent("Visit", "20261399T110000Z", ""), {}, {"file"}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.causes.front());
        for (const char* part : {"config", "data", "My cal"})
            std::filesystem::remove_all(home / part);
        home.write("My cal/other.ics", oneEvent("Other", "20260304T200000Z", ""));
        if (!c.content.empty()) home.write("My cal/item.ics", c.content);
        expect("setup '~/My cal' --email me@example.org");
        for (const auto& choice : c.choices)
            expect(choice);
        const auto explanation = ask("why Visit");
        auto expected = c.causes;
        for (auto& cause : expected) {
            if (const auto place = cause.find("ID"); place != std::string::npos)
                cause.replace(place, 2, valueAt(explanation, "event/id"));
        }
        EXPECT_EQ(causes(explanation), expected);
        EXPECT_EQ(valueAt(explanation, "shown"), "false");
        EXPECT_FALSE(isInAgenda("Visit"));
        const bool hasCommands = expected.front().find(": ") != std::string::npos;
        for (const auto& cause : expected) {
            if (!hasCommands) continue;
            EXPECT_EQ(shell(cause.substr(cause.find(": ") + 2)).exitCode, 0) << cause;
        }
        EXPECT_EQ(isInAgenda("Visit"), hasCommands);
    }
}

TEST_F(Why, ADayNamesWhatIsHiddenNewUnreadOrDelegated) {
    home.write("cal/lunch.ics", oneEvent("Lunch", "20260304T110000Z", "20260304T120000Z"));
    home.write("cal/day.ics", oneEvent("Fair", "20260304", ""));
    home.write("cal/broken.ics", oneEvent("Torn", "20261399T110000Z", ""));
    home.write("late/new.ics", oneEvent("Newcomer", "20260304T130000Z", ""));
    home.write("boss/boss.ics", oneEvent("Boss", "20260304T140000Z", ""));
    home.write("gone/gone.ics", oneEvent("Gone", "20260304T140000Z", ""));
    expectEach({{"setup ~/cal"},
                {"accounts add ~/late"},
                {"accounts add ~/boss --delegate"},
                {"accounts add ~/gone"}});
    home.write("late/sub/new.ics", oneEvent("Newest", "20260304T150000Z", ""));
    std::filesystem::remove_all(home / "gone");

    const std::string unread = "the account gone cannot be read";
    expectEach({{"why",
                 0,
                 {"Today, Wed, Mar 4: 2 of 5 are not shown", "all day", "late/sub is new and not watched yet",
                  "heedbanner calendars activate late/sub\n", unread,
                  "\"Torn\": " + (home / "cal/broken.ics").string() + ":4: ", "The account boss is delegated",
                  "!Lunch"}},
                {"why Lunhc", 3, {"did you mean \"Lunch\"?", unread}},
                {"why lunch --day tomorrow", 3},
                {"why --day soon", 2},
                {"why --day 2026-03-07"}});
    const auto list = ask("why");
    ASSERT_EQ(list.asArray()->size(), 4u);
    EXPECT_TRUE(list.asArray()->at(2).find("event")->isNull());
    const auto shown = ask("why lunch");
    EXPECT_EQ(valueAt(shown, "shown"), "true");
    EXPECT_EQ(valueAt(shown, "state"), "upcoming");
    EXPECT_EQ(valueAt(shown, "alertDate"), "2026-03-04T10:59:00.000Z");
}

TEST_F(Why, AlertsAreListedByTheirMomentWithTheirLead) {
    home.write("cal/lunch.ics", oneEvent("Lunch", "20260304T110000Z", "20260304T120000Z"));
    home.write("cal/night.ics", oneEvent("Night", "20260304T233000Z", "20260305T003000Z"));
    home.write("cal/task.ics", task("Report", "DUE:20260304T103000Z\r\n"));
    expectEach({{"setup ~/cal"}, {"remind Tea --in 30m --lead 10m"}, {"event set Night --lead 1h"}});
    EXPECT_EQ(expect("alerts").out,
              "Today, Wed, Mar 4\n"
              "  10:20\u202FAM ▌ Tea  10:30\u202FAM, 10m before its start\n"
              "  11:29\u202FAM ▌ Report  11:30\u202FAM, 1m before its start  [cal]\n"
              "  11:59\u202FAM ▌ Lunch  12:00\u202FPM\u2006–\u20061:00\u202FPM, 1m before its start  [cal]\n"
              "  11:30\u202FPM ▌ Night  Thu, Mar 5 12:30\u202FAM\u2006–\u20061:30\u202FAM, 1h before its "
              "start  [cal]\n");
    const auto list = ask("alerts");
    ASSERT_EQ(list.asArray()->size(), 4u);
    EXPECT_EQ(valueAt(list, "0/date"), "2026-03-04T09:20:00.000Z");
    EXPECT_EQ(valueAt(list, "0/kind"), "hbrReminder");
    EXPECT_EQ(list.asArray()->front().find("lead")->asDouble(), 600);
    EXPECT_EQ(valueAt(list, "0/event/title"), "Tea");
    expectEach({{"calendars deactivate --all"},
                {"alerts --now 2026-03-07T09:00:00Z", 0, {"=No alerts are due.\n"}}});
}

}  // namespace
