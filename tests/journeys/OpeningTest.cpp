#include "Journey.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;
using ::testing::StartsWith;

/// A desktop whose only program writes down what it is given to open.
class Opening : public Journey {
  protected:
    void SetUp() override {
        const auto handler = home.write("handler.sh", "printf '%s\\n' \"$1\" >> \"$0.opened\"\n");
        home.write("data/applications/handler.desktop",
                   "[Desktop Entry]\nType=Application\nName=Handler\nExec=/bin/sh " + handler.string() +
                       " %u\nMimeType=x-scheme-handler/https;x-scheme-handler/zoommtg;text/calendar;\n");
        home.write("data/applications/mimeinfo.cache", "[MIME Cache]\ntext/calendar=handler.desktop;\n");
        variables["XDG_DATA_DIRS"] = home / "none";
        variables["XDG_CONFIG_DIRS"] = home / "none";
        handles({"x-scheme-handler/https"});

        home.write("cal/zoom.ics", test::oneEvent("Zoom", "20261125T100000Z", "20261125T110000Z",
                                                  "LOCATION:https://zoom.us/j/12?pwd=$(id)\r\n"));
        home.write("cal/two.ics",
                   test::oneEvent("Two", "20261125T120000Z", "20261125T130000Z",
                                  "DESCRIPTION:https://zoom.us/j/34 https://whereby.com/room\r\n"));
        home.write("cal/page.ics", test::oneEvent("Page", "20261125T140000Z", "20261125T150000Z",
                                                  "URL:https://events.example.org/7\r\n"));
        home.write("cal/evil.ics", test::oneEvent("Evil", "20261125T160000Z", "20261125T170000Z",
                                                  "DESCRIPTION:smb://host/https://zoom.us/j/56\r\n"));
        ASSERT_EQ(companion({"setup", home / "cal"}).exitCode, 0);
    }

    /// Makes the program the default for these kinds only.
    void handles(const std::vector<std::string>& kinds) {
        std::string list = "[Default Applications]\n";
        for (const auto& kind : kinds)
            list += kind + "=handler.desktop\n";
        home.write("config/mimeapps.list", list);
    }

    test::Outcome at(const std::string& now, Arguments arguments) {
        arguments.insert(arguments.end(), {"--now", now});
        return companion(arguments);
    }

    std::string idOf(const std::string& title) {
        const auto agenda = json(at(morning, {"agenda", "--json"}));
        for (const auto& event : *agenda.asArray()) {
            if (*event.find("title")->asString() == title) return *event.find("id")->asString();
        }
        ADD_FAILURE() << title;
        return {};
    }

    /// What the program got since the last question.
    std::string opened() {
        const auto file = home / "handler.sh.opened";
        const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (std::chrono::steady_clock::now() < deadline) {
            const std::string lines = test::readFile(file);
            if (lines.ends_with('\n')) {
                std::filesystem::remove(file);
                return lines;
            }
            std::this_thread::yield();
        }
        return {};
    }

    const std::string morning = "2026-11-25T07:00:00Z";
};

TEST_F(Opening, JoinOpensTheCallThatIsMeant) {
    const auto early = at(morning, {"join"});
    EXPECT_EQ(early.exitCode, 3);
    EXPECT_THAT(early.err, HasSubstr("the next one is \"Zoom\""));

    const auto joined = at("2026-11-25T09:59:30Z", {"join"});
    EXPECT_EQ(joined.exitCode, 0) << joined.err;
    EXPECT_EQ(joined.out, "Joining \"Zoom\": https://zoom.us/j/12?pwd=$(id)\n");
    EXPECT_EQ(opened(), "https://zoom.us/j/12?pwd=$(id)\n");
    handles({"x-scheme-handler/https", "x-scheme-handler/zoommtg"});
    EXPECT_EQ(at("2026-11-25T10:30:00Z", {"join"}).exitCode, 0);
    EXPECT_EQ(opened(), "zoommtg://zoom.us/join?confno=12&pwd=$(id)\n");
    EXPECT_EQ(at(morning, {"join", "zoom", "--print"}).out, "https://zoom.us/j/12?pwd=$(id)\n");
    EXPECT_EQ(at(morning, {"join", "page"}).exitCode, 3);

    const auto several = at("2026-11-25T12:30:00Z", {"join"});
    EXPECT_EQ(several.exitCode, 3);
    EXPECT_THAT(several.err, HasSubstr("2. Whereby  https://whereby.com/room"));
    variables["PATH"] = programs() + ":/usr/bin:/bin";
    const char* onTerminal =
        "printf '3\\n2\\n' | script -qec 'heedbanner join --now 2026-11-25T12:30:00Z' /dev/null";
    EXPECT_THAT(run("/bin/bash", {"-c", onTerminal}).out, HasSubstr("Which one? [1-2]"));
    EXPECT_EQ(opened(), "https://whereby.com/room\n");
    EXPECT_EQ(at(morning, {"event", "set", "Two", "--link", "2"}).exitCode, 0);
    EXPECT_EQ(at("2026-11-25T12:30:00Z", {"join"}).exitCode, 0);
    EXPECT_EQ(opened(), "https://whereby.com/room\n");

    const auto evil = at(morning, {"join", "evil"});
    EXPECT_EQ(evil.exitCode, 1);
    EXPECT_THAT(evil.err, HasSubstr("smb: is neither a web page nor a known conference program"));
    handles({});
    const auto none = at("2026-11-25T12:30:00Z", {"join"});
    EXPECT_EQ(none.exitCode, 1);
    EXPECT_THAT(none.err, HasSubstr("no program is set up to open https: links"));
}

TEST_F(Opening, ADeepLinkShowsJoinsOrOpensTheCalendar) {
    const std::string zoom = idOf("Zoom");
    const auto card = at(morning, {"open", "heedbanner://preview/" + zoom});
    EXPECT_EQ(card.exitCode, 0) << card.err;
    EXPECT_EQ(card.out, at(morning, {"show", "Zoom"}).out);
    EXPECT_EQ(at(morning, {"open", "heedbanner://joinCall/" + zoom}).exitCode, 0);
    EXPECT_EQ(opened(), "https://zoom.us/j/12?pwd=$(id)\n");
    EXPECT_EQ(at(morning, {"open", "heedbanner://joinCall/" + idOf("Two")}).exitCode, 3);

    EXPECT_EQ(at(morning, {"open", "heedbanner://viewInCalendar/" + idOf("Page")}).exitCode, 0);
    EXPECT_EQ(opened(), "https://events.example.org/7\n");
    handles({"text/calendar"});
    const auto calendar = at(morning, {"open", "heedbanner://viewInCalendar/" + zoom});
    EXPECT_EQ(calendar.exitCode, 0) << calendar.err;
    EXPECT_EQ(calendar.out, "opened Handler\n");
    EXPECT_EQ(opened(), "\n");

    for (const char* url :
         {"heedbanner://JoinCall/x", "heedbanner://preview/", "https://zoom.us/j/1", "file:///"})
        EXPECT_EQ(companion({"open", url}).exitCode, 2) << url;
    EXPECT_EQ(companion({"open", "heedbanner://preview/unknown"}).exitCode, 3);
}

TEST_F(Opening, NextIsOneLineOrNull) {
    const auto next = at("2026-11-25T09:50:00Z", {"next"});
    EXPECT_EQ(next.out, "Zoom, 11:00\u202FAM\u2006–\u200612:00\u202FPM, in 10 minutes\n");
    const auto record = json(at("2026-11-25T09:59:30Z", {"next", "--json"}));
    EXPECT_EQ(*record.find("state")->asString(), "pending");
    EXPECT_EQ(*record.find("event")->find("title")->asString(), "Zoom");
    const auto none = at("2026-11-26T07:00:00Z", {"next", "--json"});
    EXPECT_EQ(none.exitCode, 0);
    EXPECT_EQ(none.out, "{\n  \"event\": null\n}\n");
}

TEST_F(Opening, ScreenshotModeShowsTheDemonstrationEverywhere) {
    ASSERT_EQ(companion({"settings", "set", "debugScreenshotMode", "true"}).exitCode, 0);
    const auto drawn = [&](const std::string& widget, const std::string& family) {
        return widgets({"render", widget, "--family", family, "--format", "text", "--now", morning}).out;
    };
    EXPECT_THAT(drawn("upcoming", "large"), HasSubstr("Design Sync"));
    EXPECT_THAT(drawn("countdown", "medium"), HasSubstr("Design Sync"));
    // Drawn as of twelve minutes into the event, whatever the clock says.
    EXPECT_THAT(drawn("current", "large"), HasSubstr("Board Meeting"));
    EXPECT_THAT(drawn("current", "large"), HasSubstr("48"));
    EXPECT_THAT(at(morning, {"next"}).out, StartsWith("Design Sync"));
    EXPECT_THAT(at(morning, {"status"}).out, StartsWith("Write sales report"));
    ASSERT_EQ(companion({"settings", "reset", "debugScreenshotMode"}).exitCode, 0);
    EXPECT_THAT(drawn("upcoming", "large"), HasSubstr("Zoom"));
}

}  // namespace
