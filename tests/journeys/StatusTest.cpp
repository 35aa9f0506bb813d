#include "Journey.h"

#include <TimeAndText/Text.h>
#include <gmock/gmock.h>
#include <support/desktop/ChildProcess.h>

#include <csignal>

namespace {

using ::test::oneEvent;

class StatusLine : public test::Journey {
  protected:
    void SetUp() override {
        home.write("cal/review.ics", oneEvent("R & D <b>\"%{A1:x:}\\nreview", "20261125T100000Z",
                                              "20261125T110000Z", "LOCATION:https://zoom.us/j/1\r\n"));
        expect("setup ~/cal");
        currentTime = "2026-11-25T09:50:00Z";
    }
    /// A time of day of 25 November, in UTC.
    static std::string at(const std::string& time) { return " --now 2026-11-25T" + time + "Z"; }
    platform::JsonValue waybar(const std::string& options) {
        return json(expect("status --format waybar" + options));
    }

    Started follow(const std::string& text) {
        return start("heedbanner", {"status", "--follow", "--now", currentTime, "--template", text});
    }
    /// Waits until the program wrote so many lines.
    static std::vector<std::string> lines(const Started& program, std::size_t count) {
        std::vector<std::string> found;
        test::waitUntil([&] {
            found = platform::split(test::readFile(program.out), "\n");
            return found.size() > count;
        });
        found.pop_back();
        return found;
    }
    void expectEnd(const Started& follower) {
        kill(follower.process, SIGTERM);
        const auto end = finish(follower);
        EXPECT_EQ(end.exitCode, 0);
        EXPECT_EQ(end.err, "");
    }
};

TEST_F(StatusLine, EachStateHasItsWordsAndClasses) {
    home.write("cal/plain.ics", oneEvent("Plain", "20261125T120000Z", "20261125T124000Z"));
    const std::string review = "R &amp; D &lt;b&gt;&quot;%{A1:x:} review · ";
    const std::tuple<std::string, std::string, const char*, const char*> cases[] = {
        {"09:50:20", review + "in 9\u202Fm", R"(["upcoming","has-call"])", "0"},
        {"09:59:30", review + "in 1\u202Fm", R"(["pending","has-call"])", "0"},
        {"10:15:00", review + "45\u202Fm left", R"(["current","has-call"])", "25"},
        {"12:10:00", "Plain · 30\u202Fm left", R"(["current"])", "25"},
        {"13:00:00", "", R"(["none"])", "0"}};
    for (const auto& [time, text, classes, percentage] : cases) {
        const auto line = waybar(at(time));
        EXPECT_EQ(valueAt(line, "text"), text) << time;
        EXPECT_EQ(valueAt(line, "class"), classes) << time;
        EXPECT_EQ(valueAt(line, "alt"), valueAt(line, "class/0")) << time;
        EXPECT_EQ(valueAt(line, "percentage"), percentage) << time;
    }
    const auto early = at("08:00:00");
    EXPECT_EQ(valueAt(waybar(" --within 1h" + early), "alt"), "none");
    EXPECT_EQ(valueAt(waybar(" --within 1h" + at("09:00:00")), "alt"), "upcoming");
    EXPECT_THAT(valueAt(waybar(early), "tooltip"), testing::HasSubstr("R &amp; D"));

    std::filesystem::remove_all(home / "cal");
    EXPECT_EQ(valueAt(waybar(early), "alt"), "problem");
    expectEach({{"status" + early, 0, {"cannot be read"}},
                {"setup --undo"},
                {"status" + early, 0, {"=No calendars yet\n"}}});
}

TEST_F(StatusLine, AClickJoinsWhatIsShownOrSaysThatItHasNoCall) {
    const auto call = "LOCATION:https://zoom.us/j/9\r\n";
    home.write("cal/watch.ics", oneEvent("On call", "20261125T060000Z", "20261125T180000Z", call));
    home.write("cal/swim.ics", oneEvent("Swimming", "20261125T083000Z", "20261125T090000Z"));
    home.write("boss/board.ics", oneEvent("Board", "20261125T095900Z", "20261125T110000Z", call));
    expectEach({{"accounts add ~/boss --delegate"}, {"calendars activate --all"}});
    const std::tuple<std::string, const char*, int, const char*> cases[] = {
        {at("08:45:00"), "Swimming", 3, "\"Swimming\" has no conference link"},
        {at("09:20:00"), "On call", 0, "https://zoom.us/j/9"},
        // The delegated meeting is about to begin.
        {at("09:58:30"), "On call", 0, "https://zoom.us/j/9"},
        {at("09:59:30"), "R & D", 0, "https://zoom.us/j/1"},
        {at("05:00:00"), "On call", 0, "https://zoom.us/j/9"},
        {" --within 30m" + at("05:00:00"), "", 3, "no meeting is shown"}};
    for (const auto& [when, shown, exitCode, answer] : cases) {
        EXPECT_THAT(expect("status --template {title}" + when).out, testing::StartsWith(shown)) << when;
        expect("join --shown --print" + when, exitCode, {answer});
    }
    const auto delegated = at("09:58:30");
    expectEach({{"join --print" + at("08:45:00"), 0, {"=https://zoom.us/j/9\n"}},
                {"join Board" + delegated, 3},
                {"next" + delegated, 0, {"R & D", "!Board"}},
                {"agenda" + delegated, 0, {"Board"}},
                {"accounts remove cal"},
                {"status" + delegated, 0, {"=\n"}},
                {"next" + delegated, 3, {"only delegated accounts"}}});
}

TEST_F(StatusLine, EachBarGetsItsOwnForm) {
    currentTime = "2026-11-25T09:59:30Z";
    expectEach({// A title must not become a command of the bar.
                {"status", 0, {"=R & D <b>\"% {A1:x:} review · in 1\u202Fm\n"}},
                {"status --format i3blocks", 0, {"=R & D <b>\"%{A1:x:} review · in 1\u202Fm\n1m\n#E16C10\n"}},
                {"status --template '{start} {title}' --max-length 14", 0, {"=11:00\u202FAM R &…\n"}},
                {"status --format json", 0, {R"("state":"pending")", R"("calendarName":"cal")"}},
                {"status --template {x}", 2},
                {"status --format bar", 2},
                {"status --within soon", 2}});
}

TEST_F(StatusLine, AFollowerPrintsChangesAndEndsOnRequest) {
    const auto follower = follow("{title}");
    EXPECT_EQ(lines(follower, 1).size(), 1u);
    home.write("cal/sooner.ics", oneEvent("Sooner", "20261125T095500Z", "20261125T100000Z"));
    EXPECT_EQ(lines(follower, 2).back(), "Sooner");
    expect("rules add title contains Sooner");
    EXPECT_THAT(lines(follower, 3).back(), testing::HasSubstr("review"));
    // Changes nothing that is shown.
    expectEach({{"settings set defaultSnooze1 7"}, {"remind Tea --in 2m"}});
    EXPECT_EQ(lines(follower, 4).back(), "Tea");
    EXPECT_EQ(lines(follower, 4).size(), 4u);
    expectEnd(follower);
}

TEST_F(StatusLine, AFollowerGoesOnInAnotherZone) {
    for (const auto& [name, zone] : {std::pair("zone", "Europe/Berlin"), {"other", "Asia/Tokyo"}})
        std::filesystem::create_symlink(std::string("/usr/share/zoneinfo/") + zone, home / name);
    variables["TZ"] = ":" + (home / "zone").string();
    const auto follower = follow("{start}");
    EXPECT_EQ(lines(follower, 1).back(), "11:00\u202FAM");
    std::filesystem::rename(home / "other", home / "zone");
    EXPECT_EQ(lines(follower, 2).back(), "7:00\u202FPM");
    expectEnd(follower);
}

TEST_F(StatusLine, AFollowerEndsWithItsReader) {
    // The reader takes one line and goes; nothing changes that would be written after it.
    const auto outcome = run("/bin/bash", {"-c", "set -o pipefail; '" + programs() +
                                                     "/heedbanner' status --follow --format json --now " +
                                                     currentTime + " | head -n 1"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, testing::HasSubstr("\"state\":\"upcoming\""));
}

}  // namespace
