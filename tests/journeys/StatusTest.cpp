#include "Journey.h"

#include <Foundation/Text.h>
#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <thread>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;

class StatusLine : public Journey {
  protected:
    void SetUp() override {
        home.write("cal/review.ics", test::oneEvent("R & D <b>\"%{A1:x:}\\nreview", "20261125T100000Z",
                                                    "20261125T110000Z", "LOCATION:https://zoom.us/j/1\r\n"));
        ASSERT_EQ(companion({"setup", home / "cal"}).exitCode, 0);
    }

    std::string status(const std::string& now, Arguments more = {}) {
        Arguments arguments = {"status", "--now", now};
        arguments.insert(arguments.end(), more.begin(), more.end());
        const auto outcome = companion(arguments);
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        return outcome.out;
    }
    platform::JsonValue waybar(const std::string& now, Arguments more = {}) {
        more.insert(more.end(), {"--format", "waybar"});
        return platform::parseJson(status(now, more)).value();
    }

    /// Waits until the program wrote so many lines.
    static std::vector<std::string> lines(const Started& program, std::size_t count) {
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        std::vector<std::string> found;
        while (std::chrono::steady_clock::now() < deadline) {
            found = platform::split(test::readFile(program.out), "\n");
            if (found.size() > count) break;
            std::this_thread::yield();
        }
        found.pop_back();
        return found;
    }
};

TEST_F(StatusLine, EachStateHasItsWordsAndClasses) {
    home.write("cal/plain.ics", test::oneEvent("Plain", "20261125T120000Z", "20261125T124000Z"));
    const std::tuple<const char*, const char*, const char*, int> cases[] = {
        {"2026-11-25T09:50:20Z", "R &amp; D &lt;b&gt;&quot;%{A1:x:} review · in 9\u202Fm",
         R"(["upcoming","has-call"])", 0},
        {"2026-11-25T09:59:30Z", "R &amp; D &lt;b&gt;&quot;%{A1:x:} review · in 1\u202Fm",
         R"(["pending","has-call"])", 0},
        {"2026-11-25T10:15:00Z", "R &amp; D &lt;b&gt;&quot;%{A1:x:} review · 45\u202Fm left",
         R"(["current","has-call"])", 25},
        {"2026-11-25T12:10:00Z", "Plain · 30\u202Fm left", R"(["current"])", 25},
        {"2026-11-25T13:00:00Z", "", R"(["none"])", 0}};
    for (const auto& [now, text, classes, percentage] : cases) {
        const auto line = waybar(now);
        EXPECT_EQ(*line.find("text")->asString(), text) << now;
        EXPECT_EQ(writeJson(*line.find("class")), classes) << now;
        EXPECT_EQ(*line.find("alt"), line.find("class")->asArray()->front()) << now;
        EXPECT_EQ(line.find("percentage")->asInteger(), percentage) << now;
    }
    EXPECT_EQ(*waybar("2026-11-25T08:00:00Z", {"--within", "1h"}).find("alt")->asString(), "none");
    EXPECT_EQ(*waybar("2026-11-25T09:00:00Z", {"--within", "1h"}).find("alt")->asString(), "upcoming");
    EXPECT_THAT(*waybar("2026-11-25T08:00:00Z").find("tooltip")->asString(), HasSubstr("R &amp; D"));

    std::filesystem::remove_all(home / "cal");
    EXPECT_EQ(*waybar("2026-11-25T08:00:00Z").find("alt")->asString(), "problem");
    EXPECT_THAT(status("2026-11-25T08:00:00Z"), HasSubstr("cannot be read"));
    EXPECT_EQ(companion({"setup", "--undo"}).exitCode, 0);
    EXPECT_EQ(status("2026-11-25T08:00:00Z"), "No calendars yet\n");
}

TEST_F(StatusLine, AClickJoinsWhatIsShownOrSaysThatItHasNoCall) {
    const auto call = "LOCATION:https://zoom.us/j/9\r\n";
    home.write("cal/watch.ics", test::oneEvent("On call", "20261125T060000Z", "20261125T180000Z", call));
    home.write("cal/swim.ics", test::oneEvent("Swimming", "20261125T083000Z", "20261125T090000Z"));
    home.write("boss/board.ics", test::oneEvent("Board", "20261125T095900Z", "20261125T110000Z", call));
    for (const Arguments& more : {Arguments{"accounts", "add", home / "boss", "--delegate"},
                                  Arguments{"calendars", "activate", "--all"}})
        ASSERT_EQ(companion(more).exitCode, 0);
    const std::tuple<const char*, const char*, Arguments, int, const char*> cases[] = {
        {"2026-11-25T08:45:00Z", "Swimming", {}, 3, "\"Swimming\" has no conference link"},
        {"2026-11-25T09:20:00Z", "On call", {}, 0, "https://zoom.us/j/9"},
        // The delegated meeting is about to begin.
        {"2026-11-25T09:58:30Z", "On call", {}, 0, "https://zoom.us/j/9"},
        {"2026-11-25T09:59:30Z", "R & D", {}, 0, "https://zoom.us/j/1"},
        {"2026-11-25T05:00:00Z", "On call", {}, 0, "https://zoom.us/j/9"},
        {"2026-11-25T05:00:00Z", "", {"--within", "30m"}, 3, "no meeting is shown"}};
    for (const auto& [now, shown, more, exitCode, answer] : cases) {
        Arguments template_ = {"--template", "{title}"};
        template_.insert(template_.end(), more.begin(), more.end());
        EXPECT_THAT(status(now, template_), testing::StartsWith(shown)) << now;
        Arguments join = {"join", "--shown", "--print", "--now", now};
        join.insert(join.end(), more.begin(), more.end());
        const auto outcome = companion(join);
        EXPECT_EQ(outcome.exitCode, exitCode) << now;
        EXPECT_THAT(outcome.out + outcome.err, HasSubstr(answer)) << now;
    }
    EXPECT_EQ(companion({"join", "--print", "--now", "2026-11-25T08:45:00Z"}).out, "https://zoom.us/j/9\n");
    EXPECT_EQ(companion({"join", "Board", "--now", "2026-11-25T09:58:30Z"}).exitCode, 3);
    EXPECT_THAT(companion({"next", "--now", "2026-11-25T09:58:30Z"}).out, testing::StartsWith("R & D"));
    EXPECT_THAT(companion({"agenda", "--now", "2026-11-25T09:58:30Z"}).out, HasSubstr("Board"));

    ASSERT_EQ(companion({"accounts", "remove", "cal"}).exitCode, 0);
    EXPECT_EQ(status("2026-11-25T09:58:30Z"), "\n");
    EXPECT_THAT(companion({"next", "--now", "2026-11-25T09:58:30Z"}).err,
                HasSubstr("only delegated accounts"));
}

TEST_F(StatusLine, EachBarGetsItsOwnForm) {
    const std::string now = "2026-11-25T09:59:30Z";
    // A title must not become a command of the bar.
    EXPECT_EQ(status(now), "R & D <b>\"% {A1:x:} review · in 1\u202Fm\n");
    EXPECT_EQ(status(now, {"--format", "i3blocks"}),
              "R & D <b>\"%{A1:x:} review · in 1\u202Fm\n1m\n#E16C10\n");
    EXPECT_EQ(status(now, {"--template", "{start} {title}", "--max-length", "14"}), "11:00\u202FAM R &…\n");
    const auto record = platform::parseJson(status(now, {"--format", "json"})).value();
    EXPECT_EQ(*record.find("state")->asString(), "pending");
    EXPECT_EQ(*record.find("event")->find("calendarName")->asString(), "cal");
    for (const Arguments& wrong :
         {Arguments{"--template", "{x}"}, {"--format", "bar"}, {"--within", "soon"}}) {
        Arguments arguments = {"status"};
        arguments.insert(arguments.end(), wrong.begin(), wrong.end());
        EXPECT_EQ(companion(arguments).exitCode, 2) << wrong[1];
    }
}

TEST_F(StatusLine, AFollowerPrintsChangesAndEndsWhenTold) {
    const auto follower =
        start("heedbanner", {"status", "--follow", "--now", "2026-11-25T09:50:00Z", "--template", "{title}"});
    EXPECT_EQ(lines(follower, 1).size(), 1u);
    home.write("cal/sooner.ics", test::oneEvent("Sooner", "20261125T095500Z", "20261125T100000Z"));
    EXPECT_EQ(lines(follower, 2).back(), "Sooner");
    ASSERT_EQ(companion({"rules", "add", "title", "contains", "Sooner"}).exitCode, 0);
    EXPECT_THAT(lines(follower, 3).back(), HasSubstr("review"));
    // Changes nothing that is shown.
    ASSERT_EQ(companion({"settings", "set", "defaultSnooze1", "7"}).exitCode, 0);
    ASSERT_EQ(companion({"remind", "Tea", "--in", "2m", "--now", "2026-11-25T09:50:00Z"}).exitCode, 0);
    EXPECT_EQ(lines(follower, 4).back(), "Tea");
    EXPECT_EQ(lines(follower, 4).size(), 4u);
    kill(follower.process, SIGTERM);
    const auto end = finish(follower);
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_EQ(end.err, "");
}

TEST_F(StatusLine, AFollowerGoesOnInAnotherZone) {
    const auto link = [&](const std::string& name, const std::string& zone) {
        std::filesystem::create_symlink("/usr/share/zoneinfo/" + zone, home / name);
    };
    link("zone", "Europe/Berlin");
    link("other", "Asia/Tokyo");
    variables["TZ"] = ":" + (home / "zone").string();
    const auto follower =
        start("heedbanner", {"status", "--follow", "--now", "2026-11-25T09:50:00Z", "--template", "{start}"});
    EXPECT_EQ(lines(follower, 1).back(), "11:00\u202FAM");
    std::filesystem::rename(home / "other", home / "zone");
    EXPECT_EQ(lines(follower, 2).back(), "7:00\u202FPM");
    kill(follower.process, SIGTERM);
    EXPECT_EQ(finish(follower).exitCode, 0);
}

TEST_F(StatusLine, AFollowerEndsWithItsReader) {
    // The reader takes one line and goes; nothing changes that would be written after it.
    const auto outcome =
        run("/bin/bash", {"-c", "set -o pipefail; '" + programs() +
                                    "/heedbanner' status --follow --format json --now 2026-11-25T09:50:00Z | "
                                    "head -n 1"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("\"state\":\"upcoming\""));
}

}  // namespace
