#include "Journey.h"

#include <gmock/gmock.h>
#include <support/desktop/ChildProcess.h>

namespace {

/// A desktop whose only program writes down what it is given to open.
class Opening : public test::Journey {
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
        currentTime = "2026-11-25T07:00:00Z";
        expect("setup ~/cal");
    }

    /// Makes the program the default for these kinds only.
    void handles(const std::vector<std::string>& kinds) {
        std::string list = "[Default Applications]\n";
        for (const auto& kind : kinds)
            list += kind + "=handler.desktop\n";
        home.write("config/mimeapps.list", list);
    }

    std::string idOf(const std::string& title) { return valueAt(ask("event show " + title), "event/id"); }

    /// What the program got since the last question.
    std::string opened() {
        const auto file = home / "handler.sh.opened";
        std::string lines;
        test::waitUntil([&] { return (lines = test::readFile(file)).ends_with('\n'); });
        std::filesystem::remove(file);
        return lines;
    }
};

TEST_F(Opening, JoinOpensTheCallThatIsMeant) {
    const std::string atTwo = " --now 2026-11-25T12:30:00Z";
    expectEach(
        {{"join", 3, {"the next one is \"Zoom\""}},
         {"join --now 2026-11-25T09:59:30Z", 0, {"=Joining \"Zoom\": https://zoom.us/j/12?pwd=$(id)\n"}}});
    EXPECT_EQ(opened(), "https://zoom.us/j/12?pwd=$(id)\n");
    handles({"x-scheme-handler/https", "x-scheme-handler/zoommtg"});
    expect("join --now 2026-11-25T10:30:00Z");
    EXPECT_EQ(opened(), "zoommtg://zoom.us/join?confno=12&pwd=$(id)\n");
    expectEach({{"join zoom --print", 0, {"=https://zoom.us/j/12?pwd=$(id)\n"}},
                {"join page", 3},
                {"join" + atTwo, 3, {"2. Whereby  https://whereby.com/room"}}});
    variables["PATH"] = programs() + ":/usr/bin:/bin";
    const auto onTerminal = "printf '3\\n2\\n' | script -qec 'heedbanner join" + atTwo + "' /dev/null";
    EXPECT_THAT(run("/bin/bash", {"-c", onTerminal}).out, testing::HasSubstr("Which one? [1-2]"));
    EXPECT_EQ(opened(), "https://whereby.com/room\n");
    expectEach({{"event set Two --link 2"}, {"join" + atTwo}});
    EXPECT_EQ(opened(), "https://whereby.com/room\n");
    expect("join evil", 1, {"smb: is neither a web page nor a known conference program"});
    handles({});
    expect("join" + atTwo, 1, {"no program is set up to open https: links"});
}

TEST_F(Opening, ADeepLinkShowsJoinsOrOpensTheCalendar) {
    const std::string zoom = idOf("Zoom");
    expectEach({{"open heedbanner://preview/" + zoom, 0, {"=" + type("show Zoom").out}},
                {"open heedbanner://joinCall/" + zoom}});
    EXPECT_EQ(opened(), "https://zoom.us/j/12?pwd=$(id)\n");
    expectEach({{"open heedbanner://joinCall/" + idOf("Two"), 3},
                {"open heedbanner://viewInCalendar/" + idOf("Page")}});
    EXPECT_EQ(opened(), "https://events.example.org/7\n");
    handles({"text/calendar"});
    expect("open heedbanner://viewInCalendar/" + zoom, {"=opened Handler\n"});
    EXPECT_EQ(opened(), "\n");
    expectEach({{"open heedbanner://JoinCall/x", 2},
                {"open heedbanner://preview/", 2},
                {"open https://zoom.us/j/1", 2},
                {"open file:///", 2},
                {"open heedbanner://preview/unknown", 3}});
}

TEST_F(Opening, NextIsOneLineOrNull) {
    expectEach(
        {{"next --now 2026-11-25T09:50:00Z",
          0,
          {"=Zoom, 11:00\u202FAM\u2006–\u200612:00\u202FPM, in 10 minutes\n"}},
         {"next --json --now 2026-11-25T09:59:30Z", 0, {R"("state": "pending")", R"("title": "Zoom")"}},
         {"next --json --now 2026-11-26T07:00:00Z", 0, {"={\n  \"event\": null\n}\n"}}});
}

TEST_F(Opening, ScreenshotModeShowsTheDemonstrationEverywhere) {
    const auto drawn = [&](const std::string& widget) {
        return "heedbanner-widgets render --format text --family " + widget;
    };
    expectEach({{"settings set debugScreenshotMode true"},
                {drawn("large upcoming"), 0, {"Design Sync"}},
                {drawn("medium countdown"), 0, {"Design Sync"}},
                // Drawn as of twelve minutes into the event, whatever the clock says.
                {drawn("large current"), 0, {"Board Meeting", "48"}},
                {"next", 0, {"Design Sync"}},
                {"status", 0, {"Write sales report"}},
                {"settings reset debugScreenshotMode"},
                {drawn("large upcoming"), 0, {"Zoom"}}});
}

}  // namespace
