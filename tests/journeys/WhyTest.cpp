#include "Journey.h"

#include <gmock/gmock.h>

#include <TimeAndText/Date.h>

namespace {

using ::test::Journey;
using ::test::oneEvent;
using ::test::Outcome;
using ::testing::HasSubstr;
using ::testing::Not;

class Why : public Journey {
  protected:
    Outcome at(Arguments arguments) {
        arguments.insert(arguments.end(), {"--now", now});
        return companion(arguments);
    }
    /// A command as it is printed.
    Outcome shell(const std::string& command) {
        variables["PATH"] = programs() + ":/usr/bin:/bin";
        return run("/bin/sh", {"-c", command + " --now " + now});
    }
    bool isInAgenda(const std::string& title) {
        return at({"agenda", "--json"}).out.find("\"title\": \"" + title + "\"") != std::string::npos;
    }
    static std::string task(const std::string& title, const std::string& lines) {
        return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nBEGIN:VTODO\r\nUID:" + title + "\r\nSUMMARY:" + title +
               "\r\n" + lines + "END:VTODO\r\nEND:VCALENDAR\r\n";
    }
    /// "RULE" or "RULE: COMMAND" of each rule that hides the event.
    std::vector<std::string> causes(const platform::JsonValue& explanation) {
        std::vector<std::string> list;
        for (const auto& rule : *explanation.find("rules")->asArray()) {
            if (*rule.find("decision")->asString() != "hides") continue;
            const auto* command = rule.find("command");
            list.push_back(*rule.find("rule")->asString() + (command ? ": " + *command->asString() : ""));
        }
        return list;
    }

    /// A Wednesday, 10:00 in Berlin.
    const std::string now = "2026-03-04T09:00:00Z";
};

TEST_F(Why, EachCauseIsNamedAndItsCommandMakesTheEventAppear) {
    const std::string noon = "20260304T110000Z";
    const std::string me = "ATTENDEE;PARTSTAT=";
    const std::string address = ":mailto:me@example.org\r\n";
    struct Case {
        std::string name;
        std::string content;
        std::vector<Arguments> choices;
        /// "ID" stands for the event's identifier.
        std::vector<std::string> causes;
    };
    const auto event = [&](const std::string& lines = "") { return oneEvent("Visit", noon, "", lines); };
    const Case cases[] = {
        {"not watched",
         event(),
         {{"calendars", "deactivate", "My cal"}},
         {"calendar: heedbanner calendars activate \"My cal/My cal\""}},
        {"list not watched",
         task("Visit", "DUE:20260304T110000Z\r\n"),
         {{"reminder-lists", "deactivate", "My cal"}},
         {"calendar: heedbanner reminder-lists activate \"My cal/My cal\""}},
        {"not accepted",
         event(me + "TENTATIVE" + address),
         {{"settings", "set", "showOnlyAcceptedEvents", "true"}},
         {"answer: heedbanner settings set showOnlyAcceptedEvents false"}},
        {"no alarm",
         event(),
         {{"settings", "set", "showOnlyEventsWithAlert", "true"}},
         {"alarm: heedbanner settings set showOnlyEventsWithAlert false"}},
        {"no call",
         event(),
         {{"settings", "set", "showOnlyEventsWithVideoConference", "true"}},
         {"call: heedbanner settings set showOnlyEventsWithVideoConference false"}},
        {"too far",
         oneEvent("Visit", "20260320T110000Z", ""),
         {},
         {"days: heedbanner settings set upcomingEventsDaysFilter 16"}},
        {"rules",
         event(),
         {{"rules", "add", "title", "contains", "nothing"},
          {"rules", "add", "title", "contains", "Vis"},
          {"rules", "add", "date", "wed"}},
         {"excludeRules: heedbanner rules remove 2 3"}},
        {"left out",
         event(),
         {{"event", "set", "Visit", "--exclude", "--now", now}},
         {"exclusion: heedbanner event set ID --include"}},
        {"task left out",
         task("Visit", "DUE:20260304T110000Z\r\n"),
         {{"event", "set", "Visit", "--exclude", "--now", now}},
         {"exclusion: heedbanner event set ID --include"}},
        {"long lead",
         event(),
         {{"settings", "set", "timeOffsetSeconds", "3h"}},
         {"lead: heedbanner settings set timeOffsetSeconds 1h"}},
        {"long lead of its own",
         event(),
         {{"event", "set", "Visit", "--lead", "3h", "--now", now}},
         {"lead: heedbanner event set ID --lead 1h"}},
        {"travel time",
         event("X-APPLE-TRAVEL-DURATION:PT2H\r\n"),
         {{"settings", "set", "includeTravelTime", "true"}},
         {"travelTime: heedbanner settings set includeTravelTime false"}},
        {"own reminder alerted",
         "",
         {{"remind", "Visit", "--in", "2h", "--lead", "105m", "--now", "2026-03-04T08:30:00Z"}},
         {"lead: heedbanner reminders edit ID --lead 0"}},
        {"demonstration",
         event(),
         {{"settings", "set", "debugScreenshotMode", "true"}},
         {"screenshotMode: heedbanner settings set debugScreenshotMode false"}},
        {"two causes",
         event(),
         {{"rules", "add", "title", "contains", "Vis"}, {"calendars", "deactivate", "--all"}},
         {"calendar: heedbanner calendars activate \"My cal/My cal\"",
          "excludeRules: heedbanner rules remove 1"}},
        // What no command changes.
        {"declined", event(me + "DECLINED" + address), {}, {"answer"}},
        {"cancelled", event("STATUS:CANCELLED\r\n"), {}, {"cancelled"}},
        {"all-day", oneEvent("Visit", "20260304", ""), {}, {"allDay"}},
        {"past", oneEvent("Visit", "20260304T085000Z", ""), {}, {"past"}},
        {"more than a year", oneEvent("Visit", "20270305T110000Z", ""), {}, {"days"}},
        {"done", task("Visit", "DUE:20260304T110000Z\r\nSTATUS:COMPLETED\r\n"), {}, {"completed"}},
        {"no due date", task("Visit", ""), {}, {"dueDate"}},
        {"due on a day", task("Visit", "DUE;VALUE=DATE:20260305\r\n"), {}, {"alarm"}},
        {"skipped", oneEvent("Visit", "20261399T110000Z", ""), {}, {"file"}}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        for (const char* part : {"config", "data", "My cal"})
            std::filesystem::remove_all(home / part);
        home.write("My cal/other.ics", oneEvent("Other", "20260304T200000Z", ""));
        if (!c.content.empty()) home.write("My cal/item.ics", c.content);
        ASSERT_EQ(companion({"setup", home / "My cal", "--email", "me@example.org"}).exitCode, 0);
        for (const auto& choice : c.choices) {
            const auto made = companion(choice);
            ASSERT_EQ(made.exitCode, 0) << made.err;
        }
        const auto asked = at({"why", "Visit", "--json"});
        ASSERT_EQ(asked.exitCode, 0) << asked.err;
        const auto explanation = json(asked);
        const auto* described = explanation.find("event");
        const std::string id = described && described->find("id") ? *described->find("id")->asString() : "";
        auto expected = c.causes;
        for (auto& cause : expected) {
            if (const auto place = cause.find("ID"); place != std::string::npos) cause.replace(place, 2, id);
        }
        EXPECT_EQ(causes(explanation), expected);
        EXPECT_EQ(*explanation.find("shown")->asBool(), false);
        EXPECT_FALSE(isInAgenda("Visit"));
        for (const auto& cause : expected) {
            const auto command = cause.find(": ");
            if (command == std::string::npos) continue;
            const auto changed = shell(cause.substr(command + 2));
            EXPECT_EQ(changed.exitCode, 0) << changed.err;
        }
        if (expected.front().find(": ") == std::string::npos) continue;
        EXPECT_TRUE(isInAgenda("Visit"));
    }
}

TEST_F(Why, ADayNamesWhatIsHiddenNewUnreadOrDelegated) {
    home.write("cal/lunch.ics", oneEvent("Lunch", "20260304T110000Z", "20260304T120000Z"));
    home.write("cal/day.ics", oneEvent("Fair", "20260304", ""));
    home.write("cal/broken.ics", oneEvent("Torn", "20261399T110000Z", ""));
    home.write("late/new.ics", oneEvent("Newcomer", "20260304T130000Z", ""));
    home.write("boss/boss.ics", oneEvent("Boss", "20260304T140000Z", ""));
    home.write("gone/gone.ics", oneEvent("Gone", "20260304T140000Z", ""));
    for (const Arguments& arguments :
         {Arguments{"setup", home / "cal"}, Arguments{"accounts", "add", home / "late"},
          Arguments{"accounts", "add", home / "boss", "--delegate"},
          Arguments{"accounts", "add", home / "gone"}})
        ASSERT_EQ(companion(arguments).exitCode, 0);
    home.write("late/sub/new.ics", oneEvent("Newest", "20260304T150000Z", ""));
    std::filesystem::remove_all(home / "gone");

    const auto day = at({"why"});
    EXPECT_EQ(day.exitCode, 0);
    EXPECT_THAT(day.out, HasSubstr("Today, Wed, Mar 4: 2 of 5 are not shown"));
    EXPECT_THAT(day.out, HasSubstr("all day"));
    EXPECT_THAT(day.out, HasSubstr("late/sub is new and not watched yet"));
    EXPECT_THAT(day.out, HasSubstr("heedbanner calendars activate late/sub\n"));
    EXPECT_THAT(day.out, HasSubstr("the account gone cannot be read"));
    EXPECT_THAT(day.out, HasSubstr("\"Torn\": " + (home / "cal/broken.ics").string() + ":4: "));
    EXPECT_THAT(day.err, HasSubstr("The account boss is delegated"));
    EXPECT_THAT(day.out, Not(HasSubstr("Lunch")));
    const auto list = json(at({"why", "--json"}));
    ASSERT_EQ(list.asArray()->size(), 4u);
    EXPECT_TRUE(list.asArray()->at(2).find("event")->isNull());

    const auto unknown = at({"why", "Lunhc"});
    EXPECT_EQ(unknown.exitCode, 3);
    EXPECT_THAT(unknown.err, HasSubstr("did you mean \"Lunch\"?"));
    EXPECT_THAT(unknown.err, HasSubstr("the account gone cannot be read"));
    const auto shown = json(at({"why", "lunch", "--json"}));
    EXPECT_EQ(*shown.find("shown")->asBool(), true);
    EXPECT_EQ(*shown.find("state")->asString(), "upcoming");
    EXPECT_EQ(*shown.find("alertDate")->asString(), "2026-03-04T10:59:00.000Z");
    EXPECT_EQ(at({"why", "lunch", "--day", "tomorrow"}).exitCode, 3);
    EXPECT_EQ(at({"why", "--day", "soon"}).exitCode, 2);
    const auto quiet = at({"why", "--day", "2026-03-07"});
    EXPECT_EQ(quiet.exitCode, 0);
}

TEST_F(Why, AlertsAreListedByTheirMomentWithTheirLead) {
    home.write("cal/lunch.ics", oneEvent("Lunch", "20260304T110000Z", "20260304T120000Z"));
    home.write("cal/night.ics", oneEvent("Night", "20260304T233000Z", "20260305T003000Z"));
    home.write("cal/task.ics", task("Report", "DUE:20260304T103000Z\r\n"));
    ASSERT_EQ(companion({"setup", home / "cal"}).exitCode, 0);
    ASSERT_EQ(at({"remind", "Tea", "--in", "30m", "--lead", "10m"}).exitCode, 0);
    ASSERT_EQ(companion({"event", "set", "Night", "--lead", "1h", "--now", now}).exitCode, 0);
    const auto alerts = at({"alerts"});
    EXPECT_EQ(alerts.out,
              "Today, Wed, Mar 4\n"
              "  10:20\u202FAM ▌ Tea  10:30\u202FAM, 10m before its start\n"
              "  11:29\u202FAM ▌ Report  11:30\u202FAM, 1m before its start  [cal]\n"
              "  11:59\u202FAM ▌ Lunch  12:00\u202FPM\u2006–\u20061:00\u202FPM, 1m before its start  [cal]\n"
              "  11:30\u202FPM ▌ Night  Thu, Mar 5 12:30\u202FAM\u2006–\u20061:30\u202FAM, 1h before its "
              "start  [cal]\n");
    const auto list = json(at({"alerts", "--json"}));
    ASSERT_EQ(list.asArray()->size(), 4u);
    const auto& first = list.asArray()->front();
    EXPECT_EQ(*first.find("date")->asString(), "2026-03-04T09:20:00.000Z");
    EXPECT_EQ(*first.find("kind")->asString(), "hbrReminder");
    EXPECT_EQ(first.find("lead")->asDouble(), 600);
    EXPECT_EQ(*first.find("event")->find("title")->asString(), "Tea");
    ASSERT_EQ(companion({"calendars", "deactivate", "--all"}).exitCode, 0);
    const auto none = companion({"alerts", "--now", "2026-03-07T09:00:00Z"});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(none.out + none.err, "No alerts are due.\n");
}

}  // namespace
