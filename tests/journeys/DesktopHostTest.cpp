#include "DesktopJourney.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <unistd.h>

#include <csignal>
#include <set>

namespace {

using test::DesktopJourney;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsSupersetOf;
using testing::SizeIs;

class DesktopHost : public DesktopJourney {
  protected:
    /// In the first row of a medium widget at the top end.
    static constexpr int rowX = test::TestDesktop::width - 300, rowY = 83;

    /// Whether the ground of a widget comes to be seen there, or goes.
    bool isWidgetAt(int x, int y, bool isThere = true) {
        return test::waitUntil(
            [&] { return test::isNear(screen().picture().at(x, y), 0xF7F7F9) == isThere; });
    }

    /// Assistive tools can then read the program's windows.
    void letToolsListen() {
        desktop.variables.erase("NO_AT_BRIDGE");
        variables = desktop.variables;
    }
    /// What an assistive tool reads after the element called `activated`, if there is one, was activated.
    std::string readByTools(const std::string& activated = "") {
        std::vector<std::string> command = {"/usr/bin/python3", desktop.script("accessible.py"),
                                            "com.quietlark.heedbanner"};
        if (!activated.empty()) command.push_back(activated);
        return desktop.run(std::move(command));
    }
    /// Whether assistive tools find the words in the program's windows.
    bool isSaid(const std::string& words) { return readByTools().find(words) != std::string::npos; }
    bool waitUntilSaid(const std::string& words) {
        return test::waitUntil([&] { return isSaid(words); });
    }
};

TEST_F(DesktopHost, OneRunsInASessionAndASecondStartHandsItsArgumentsOver) {
    setUpCalendars();
    EXPECT_EQ(runDesktop({"--quit"}).exitCode, 3);
    startDesktop({"upcoming:medium"});
    const auto before = picture();
    EXPECT_EQ(runDesktop({"current:small"}).exitCode, 0);
    EXPECT_TRUE(waitForAnotherPicture(before));
    EXPECT_EQ(runDesktop({"--add", "countdown:small", "--at", "bottom-start"}).exitCode, 0);
    EXPECT_EQ(runDesktop({"--list"}).out,
              "1  upcoming:medium  top-end\n2  current:small  top-end\n3  countdown:small  bottom-start\n");
    EXPECT_EQ(runDesktop({"--remove", "2"}).exitCode, 0);
    EXPECT_EQ(runDesktop({"--remove", "3"}).exitCode, 3);
    EXPECT_THAT(*json(runDesktop({"--list", "--json"})).asArray(), SizeIs(2));

    EXPECT_EQ(runDesktop({"--quit"}).exitCode, 0);
    EXPECT_EQ(finish(*running).exitCode, 0);
    running.reset();
}

TEST_F(DesktopHost, SaysWhatWasMeantByASlip) {
    struct Case {
        Arguments arguments;
        int exitCode;
        const char* reported;
    };
    for (const Case& c :
         {Case{{"upcomin:small"}, 1, "did you mean \"upcoming\"?"},
          Case{{"countdown:large"}, 1, "it has: small, medium"},
          Case{{"--galery"}, 2, "did you mean \"--gallery\"?"},
          Case{{"--json"}, 2, "--json belongs to --list"}, Case{{"--list", "--quit"}, 2, "see --help"},
          Case{{"--add", "current:small", "--at", "left"}, 2, "see --help"},
          Case{{"--focus"}, 3, "no heedbanner-desktop is running"}}) {
        const auto outcome = runDesktop(c.arguments);
        EXPECT_EQ(outcome.exitCode, c.exitCode) << c.reported;
        EXPECT_THAT(outcome.err, HasSubstr(c.reported));
    }
    EXPECT_THAT(runDesktop({"--help"}).out, HasSubstr("--add"));
}

TEST_F(DesktopHost, AChangeInACalendarOrASettingShows) {
    setUpCalendars();
    writeEvent("first.ics", "First", 3600);
    startDesktop({"upcoming:medium"});
    auto before = picture();
    writeEvent("second.ics", "Second", 7200);
    EXPECT_TRUE(waitForAnotherPicture(before));
    before = picture();
    EXPECT_EQ(companion({"event", "set", "Second", "--exclude"}).exitCode, 0);
    EXPECT_TRUE(waitForAnotherPicture(before));

    kill(running->process, SIGSTOP);
    writeEvent("third.ics", "Third", 9000);
    const std::string id = *json(companion({"agenda", "--json"})).asArray()->at(1).find("id")->asString();
    const auto opened = start("heedbanner", {"open", "heedbanner://preview/" + id});
    kill(running->process, SIGCONT);
    EXPECT_EQ(finish(opened).exitCode, 0);
    EXPECT_TRUE(waitForWindow("Third")) << "asked for before its file was noticed";
    EXPECT_EQ(endDesktop().exitCode, 0) << "asked by a signal";
}

TEST_F(DesktopHost, ATapOnARowOpensItsCardAndItsMenuOffersMore) {
    setUpCalendars();
    writeEvent("first.ics", "Planning", 3600, "LOCATION:Room 5\r\nDESCRIPTION:Bring a pen\r\n");
    const auto empty = picture();
    startDesktop({"upcoming:medium"});
    EXPECT_TRUE(waitForAnotherPicture(empty));
    picture();
    screen().click(rowX, rowY);
    ASSERT_TRUE(waitForWindow("Planning"));
    EXPECT_TRUE(test::waitUntil([&] {
        const auto card = screen().windowsTitled("Planning").front();
        return card.y > rowY && card.y < rowY + 100 && card.x <= rowX && rowX < card.x + card.width;
    })) << "below the click";
    closeWindow("Planning");
    ASSERT_TRUE(test::waitUntil([&] { return !hasWindow("Planning"); }));

    const auto choose = [&](std::initializer_list<const char*> keys) {
        const auto before = screen().windowCount();
        screen().click(rowX, rowY, 3);
        ASSERT_TRUE(test::waitUntil([&] { return screen().windowCount() > before; })) << "no menu";
        for (const char* key : keys)
            screen().key(key);
    };
    choose({"Down", "Return"});
    EXPECT_TRUE(waitForWindow("Planning")) << "Details";
    choose({"Up", "Up", "Right", "Down", "Return"});
    EXPECT_TRUE(test::waitUntil([&] {
        return companion({"settings", "get", "includeTravelTime"}).out == "true\n";
    })) << "Settings, Include travel time";
    choose({"Up", "Return"});
    EXPECT_EQ(finish(*running).exitCode, 0) << "Quit";
    running.reset();
}

TEST_F(DesktopHost, DragsAndSettingsWhileAnotherProgramHoldsTheLocksAreSeenAtOnceAndStoredLater) {
    setUpCalendars();
    writeEvent("first.ics", "Planning", 3600);
    startDesktop({"upcoming:medium"});
    picture();
    std::vector<int> locks;
    for (const auto& name : {std::string("desktop.toml"), test::sharedSettings}) {
        const std::string file = desktop.home() / ("config/heedbanner/" + name + ".lock");
        locks.push_back(open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    }
    const auto setLocks = [&](int operation) {
        for (const int lock : locks)
            ASSERT_EQ(flock(lock, operation), 0);
    };
    const auto dragAndToggle = [&](int x, int y, int right) {
        screen().movePointer(x, y);
        screen().press();
        for (int step = 1; step <= 10; ++step)
            screen().movePointer(x + right / 10 * step, y + 20 * step);
        screen().release();
        EXPECT_TRUE(isWidgetAt(x + right, y + 200 - 60)) << "above the first row";
        const auto before = screen().windowCount();
        screen().click(x + right, y + 200, 3);
        ASSERT_TRUE(test::waitUntil([&] { return screen().windowCount() > before; })) << "no menu";
        for (const char* key : {"Up", "Up", "Right", "Down", "Return"})
            screen().key(key);
        EXPECT_TRUE(test::waitUntil([&] { return screen().windowCount() == before; }));
    };
    const auto stored = [&] {
        return runDesktop({"--list"}).out + companion({"settings", "get", "includeTravelTime"}).out;
    };
    const std::string before = stored();
    setLocks(LOCK_EX);
    dragAndToggle(rowX, rowY, -300);
    EXPECT_EQ(stored(), before);
    screen().click(rowX - 300, rowY + 200);
    EXPECT_TRUE(waitForWindow("Planning")) << "the main thread does not wait";
    closeWindow("Planning");
    setLocks(LOCK_UN);
    const std::string after = "1  upcoming:medium  at 249,220  screen\ntrue\n";
    EXPECT_TRUE(test::waitUntil([&] { return stored() == after; })) << stored();

    setLocks(LOCK_EX);
    dragAndToggle(rowX - 300, rowY + 200, 100);
    const auto outcome = endDesktop();
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_THAT(outcome.err, HasSubstr("desktop.toml: widget: cannot be written: another program holds"));
    EXPECT_THAT(outcome.err, HasSubstr("includeTravelTime: cannot be locked for a change: another program"));
    EXPECT_EQ(stored(), after);
    for (const int lock : locks)
        close(lock);
}

TEST_F(DesktopHost, StartedByTheBusForACardItShowsNothingElseAndEndsWithIt) {
    setUpCalendars({"--desktop"});
    writeEvent("first.ics", "Planning", 3600);
    const std::string id = *json(companion({"agenda", "--json"})).asArray()->front().find("id")->asString();
    EXPECT_EQ(companion({"open", "heedbanner://preview/" + id}).exitCode, 0);
    EXPECT_TRUE(waitForWindow("Planning"));
    EXPECT_FALSE(hasWindow("Widgets"));
    const auto before = picture();
    writeEvent("first.ics", "Planning", 3600, "LOCATION:Another room\r\n");
    EXPECT_TRUE(waitForAnotherPicture(before)) << "a card says what the calendar says";
    closeWindow("Planning");
    EXPECT_TRUE(waitUntilGone());

    askOverTheBus("reload");
    EXPECT_TRUE(waitUntilGone()) << "a request that shows nothing leaves nothing behind";
}

TEST_F(DesktopHost, AnAlertIsShownOnceAndASnoozeFromOutsideShowsItAgain) {
    setUpCalendars();
    EXPECT_EQ(companion({"snooze", "Planning", "--minutes", "5"}).exitCode, 3);
    constexpr int startsIn = 30;
    writeEvent("first.ics", "Planning", startsIn, "DESCRIPTION:https://zoom.us/j/123456789\r\n");
    EXPECT_THAT(companion({"snooze", "Planning", "--minutes", "5"}).err, HasSubstr("not running"));
    startDesktop({"upcoming:medium"});
    // Its lead of a minute has begun already.
    ASSERT_TRUE(notifications->waitFor(1, startsIn));
    EXPECT_EQ(notifications->shown()[0].summary, "Planning");
    EXPECT_THAT(notifications->shown()[0].actions, IsSupersetOf({"default", "join", "snooze"}));

    EXPECT_EQ(companion({"snooze", "Planning", "--until-start"}).exitCode, 0);
    notifications->pressOnArrival("default");
    // A further change loads the events again.
    writeEvent("second.ics", "Later", 7200);
    ASSERT_TRUE(notifications->waitFor(2, startsIn + 30));
    EXPECT_TRUE(notifications->shown()[0].isClosed);
    EXPECT_THAT(notifications->shown()[1].actions, ElementsAre("default", "join", "snooze"));
    EXPECT_TRUE(waitForWindow("Planning"));
    notifications->handleFor(1);
    EXPECT_THAT(notifications->shown(), SizeIs(2));
}

TEST_F(DesktopHost, AnEventThatArrivesInsideItsAlertPeriodAlertsOnceAlsoAcrossARestart) {
    setUpCalendars();
    companion({"settings", "set", "timeOffsetSeconds", "5m"});
    startDesktop({"upcoming:medium"});
    writeEvent("late.ics", "Late", 135);
    ASSERT_TRUE(notifications->waitFor(1, 30));
    const auto& late = notifications->shown()[0];
    EXPECT_EQ(late.summary, "Late");
    EXPECT_THAT(late.body, testing::StartsWith("in 2 minutes, "));
    EXPECT_EQ(late.urgency, 1);
    EXPECT_TRUE(notifications->waitUntil(
        [&] { return notifications->shown()[0].body.starts_with("in 1 minute, "); }, 60));
    const auto isClosed = [&](std::size_t index) {
        return notifications->waitUntil([&] { return notifications->shown()[index].isClosed; }, 20);
    };
    writeEvent("cancelled.ics", "Cancelled", 65);
    ASSERT_TRUE(notifications->waitFor(2, 30));
    EXPECT_THAT(notifications->shown()[1].labels,
                ElementsAre("", HasSubstr("5 minutes"), HasSubstr("until event")))
        << "a snooze of a minute would end when it begins";
    writeEvent("cancelled.ics", "Cancelled", 65, "STATUS:CANCELLED\r\n");
    EXPECT_TRUE(isClosed(1));
    EXPECT_FALSE(notifications->shown()[0].isClosed);
    EXPECT_EQ(endDesktop().exitCode, 0);
    EXPECT_TRUE(isClosed(0)) << "it ends with the program";

    writeEvent("begun.ics", "Begun", -20);
    startDesktop({});
    ASSERT_TRUE(notifications->waitFor(3, 30));
    EXPECT_EQ(notifications->shown()[2].summary, "Begun");
    EXPECT_EQ(notifications->shown()[2].urgency, 2);
    notifications->handleFor(2);
    EXPECT_THAT(notifications->shown(), SizeIs(3)) << "what alerted before";
}

TEST_F(DesktopHost, ACardAsksBeforeItHidesASeriesUndoesItAndKnowsWhatIsOver) {
    letToolsListen();
    setUpCalendars();
    writeEvent("weekly.ics", "Weekly", -600, "RRULE:FREQ=WEEKLY\r\n");
    writeEvent("single.ics", "Single", 3600);
    writeEvent("over.ics", "Over", -3700, "DESCRIPTION:https://zoom.us/j/123456789\r\n");
    startDesktop({"upcoming:medium"});
    const auto act = [&](const std::string& name) {
        EXPECT_TRUE(waitUntilSaid(name));
        readByTools(name);
    };
    const auto isHidden = [&](const std::string& title) {
        return companion({"event", "show", title, "--json"}).out.find("\"isExcluded\": true") !=
               std::string::npos;
    };
    const auto openCard = [&](const std::string& title) {
        const auto shown = json(companion({"event", "show", title, "--json"}));
        EXPECT_EQ(companion({"open", "heedbanner://preview/" + *shown.find("event")->find("id")->asString()})
                      .exitCode,
                  0);
    };
    openCard("Weekly");
    act("Don't show this event…");
    act("Cancel");
    act("Don't show this event…");
    EXPECT_TRUE(waitUntilSaid("Hide only this event, or all its repetitions too?"));
    const auto isListed = [&] { return companion({"agenda"}).out.find("Under way") != std::string::npos; };
    EXPECT_TRUE(isListed());
    act("Hide only this one");
    EXPECT_TRUE(waitUntilSaid("This event is hidden, its repetitions are not"));
    EXPECT_TRUE(test::waitUntil([&] { return !isListed(); }));
    EXPECT_FALSE(isHidden("Weekly"));
    act("Undo");
    EXPECT_TRUE(test::waitUntil(isListed));
    act("Don't show this event…");
    act("Hide all");
    EXPECT_TRUE(waitUntilSaid("It is under way and stays in the list of current events until"));
    EXPECT_TRUE(isHidden("Weekly"));
    act("Undo");
    EXPECT_TRUE(test::waitUntil([&] { return !isHidden("Weekly"); }));
    closeWindow("Weekly");

    openCard("Over");
    EXPECT_TRUE(waitUntilSaid("This event is over; it ended"));
    EXPECT_FALSE(isSaid("Join Call"));
    closeWindow("Over");

    openCard("Single");
    act("Don't show this event");
    EXPECT_TRUE(waitUntilSaid("This event is hidden"));
    EXPECT_TRUE(isHidden("Single"));
    act("OK");
    openCard("Single");
    act("Show this event again");
    EXPECT_TRUE(test::waitUntil([&] { return !isHidden("Single"); }));
}

TEST_F(DesktopHost, ManyAlertsAtOnceComeAsAFewMessagesOrCardsAndOneForTheRest) {
    setUpCalendars();
    constexpr int startsIn = 30;
    std::string longText = " ";
    while (longText.size() < 50'000)
        longText += "اجتماع ";
    struct Case {
        int events;
        std::size_t shown;
        std::string rest;
        bool hasService = true;
    };
    for (const Case& c : {Case{20, 20, ""}, Case{60, 20, "Other alerts: 40"}, Case{3, 3, "", false},
                          Case{5, 3, "Other alerts: 2", false}}) {
        const std::string prefix = "case " + std::to_string(c.events);
        if (!c.hasService) notifications.reset();
        for (int i = 0; i < c.events; ++i)
            writeEvent("many" + std::to_string(i) + ".ics", prefix + "." + std::to_string(i) + longText,
                       startsIn);
        startDesktop({"upcoming:medium"});
        std::set<std::string> alerts;
        bool hasRest = false;
        const auto see = [&](const std::string& title) {
            if (title.starts_with(prefix)) alerts.insert(title);
            if (title.starts_with("Other alerts")) hasRest = title == c.rest;
        };
        EXPECT_TRUE(test::waitUntil([&] {
            if (c.hasService) {
                notifications->handleFor(0.1);
                for (const auto& one : notifications->shown()) {
                    EXPECT_LT(one.summary.size() + one.body.size(), 3000u);
                    see(one.summary);
                }
            } else {
                for (const auto& window : screen().windows())
                    see(window.title);
            }
            return alerts.size() == c.shown && hasRest == !c.rest.empty();
        })) << prefix
            << ": " << alerts.size();
        EXPECT_EQ(endDesktop().exitCode, 0);
        for (int i = 0; i < c.events; ++i)
            std::filesystem::remove(home / ("calendars/many" + std::to_string(i) + ".ics"));
    }
}

TEST_F(DesktopHost, ANewTimeZoneOrClockRestartsItWithItsSnoozes) {
    const auto zone = home / "localtime";
    std::filesystem::create_symlink("/usr/share/zoneinfo/Europe/Berlin", zone);
    variables["TZ"] = ":" + zone.string();
    variables["XDG_CURRENT_DESKTOP"] = "GNOME";
    variables["GSETTINGS_BACKEND"] = "keyfile";
    setUpCalendars();
    constexpr int startsIn = 30;
    writeEvent("first.ics", "Planning", startsIn);
    const auto empty = picture();
    startDesktop({"upcoming:medium"});
    ASSERT_TRUE(notifications->waitFor(1, startsIn));
    EXPECT_EQ(companion({"snooze", "Planning", "--until-start"}).exitCode, 0);
    auto before = picture();

    std::filesystem::create_symlink("/usr/share/zoneinfo/Asia/Tokyo", home / "other");
    std::filesystem::rename(home / "other", zone);
    EXPECT_TRUE(waitForAnotherPicture(before) && waitForAnotherPicture(empty));
    before = picture();
    desktop.home().write("config/glib-2.0/settings/keyfile",
                         "[org/gnome/desktop/interface]\nclock-format='24h'\n");
    EXPECT_TRUE(waitForAnotherPicture(before));
    ASSERT_TRUE(notifications->waitFor(2, startsIn + 30));
    notifications->handleFor(1);
    EXPECT_THAT(notifications->shown(), SizeIs(2));
    EXPECT_EQ(endDesktop().exitCode, 0);
}

TEST_F(DesktopHost, OnWaylandItFollowsItsOutputAndTakesTheKeyboardAndMoreWidgets) {
    desktop.variables.erase("NO_AT_BRIDGE");
    startWayland(2);
    desktop.removeOutput(2);
    setUpCalendars();
    writeEvent("first.ics", "Planning", 3600);
    EXPECT_EQ(runDesktop({"--add", "upcoming:medium", "--at", "top-start", "--output", "X11-3"}).exitCode, 0);
    startDesktop({});
    const int first = test::TestDesktop::leftOf(1) + 100, second = test::TestDesktop::leftOf(2) + 100;
    constexpr int top = 35;
    EXPECT_TRUE(isWidgetAt(first, top)) << "its output is not there";
    desktop.addOutput(3, 2);
    EXPECT_TRUE(isWidgetAt(first, top, false) && isWidgetAt(second, top)) << "its output came";
    desktop.removeOutput(3);
    EXPECT_TRUE(isWidgetAt(first, top)) << "its output went";

    const auto before = picture();
    EXPECT_EQ(runDesktop({"--focus"}).exitCode, 0);
    EXPECT_TRUE(waitForAnotherPicture(before)) << "the focus is seen";
    screen().key("Return");
    EXPECT_TRUE(
        test::waitUntil([&] { return desktop.swayTree().find("\"Planning\"") != std::string::npos; }));

    EXPECT_EQ(runDesktop({"--gallery"}).exitCode, 0);
    const std::string one = "1  upcoming:medium  top-start  X11-3\n";
    for (const auto& [button, list] :
         {std::pair("Add: Next Event, Small", one + "2  countdown:small  top-end\n"),
          std::pair("Remove: Next Event, Small", one)}) {
        desktop.run(
            {"/usr/bin/python3", desktop.script("accessible.py"), "com.quietlark.heedbanner", button});
        EXPECT_TRUE(test::waitUntil([&] { return runDesktop({"--list"}).out == list; })) << button;
    }
}

TEST_F(DesktopHost, LooksAsItIsDrawnIntoAFileAndLikeTheToolkitWherePortalsAreMissing) {
    setUpCalendars();
    struct Case {
        const char* language;
        const char* preference;
        const char* appearance;
        int x;
        std::uint32_t ground;
    };
    constexpr int mediumWidth = 455, mediumHeight = 213, edge = 20;
    for (const Case& c : {Case{"en", "0", "light", test::TestDesktop::width - edge - mediumWidth, 0xF7F7F9},
                          Case{"he", "1", "dark", edge, 0x1F1F24}}) {
        variables["LANGUAGE"] = c.language;
        desktop.home().write("config/gtk-3.0/settings.ini",
                             "[Settings]\ngtk-font-name=Inter 10\ngtk-application-prefer-dark-theme=" +
                                 std::string(c.preference) + "\n");
        startDesktop({"upcoming:medium"});
        const auto file = home / "drawn.png";
        ASSERT_EQ(widgets({"render", "upcoming", "--family", "medium", "--scale", "1.25", "--appearance",
                           c.appearance, "-o", file})
                      .exitCode,
                  0);
        const auto drawn = test::Picture::ofPng(file, c.ground);
        int differing = drawn.width * drawn.height;
        // Smoothing may differ where a fraction of a pixel was rounded.
        EXPECT_TRUE(test::waitUntil([&] {
            differing = picture().part(c.x, edge, mediumWidth, mediumHeight).differences(drawn, 40);
            return differing < drawn.width * drawn.height / 500;
        })) << c.language
            << ": " << differing << " pixels";
        EXPECT_EQ(endDesktop().exitCode, 0);
    }
}

TEST_F(DesktopHost, SaysWhatTheDesktopLacks) {
    desktop.variables.erase("NO_AT_BRIDGE");
    desktop.startWaylandWithoutLayers(false);
    variables = desktop.variables;
    running = start("heedbanner-desktop", {"--gallery"});
    EXPECT_TRUE(waitUntilSaid("This desktop has no place for widgets behind the windows"));
    EXPECT_THAT(endDesktop().err, HasSubstr("neither layer-shell nor an X server"));
}

TEST_F(DesktopHost, AnEmptyWidgetAddsWhatLiesInTheUsualPlacesByClicks) {
    letToolsListen();
    startDesktop({"upcoming:medium"});
    ASSERT_TRUE(waitUntilSaid("No calendars yet"));
    writeEvent("first.ics", "Planning", 1800, "URL:https://meet.google.com/abc-defg-hij\r\n");
    std::filesystem::rename(home / "calendars", variables["HOME"] + "/.calendars");
    screen().click(rowX, rowY);
    readByTools("Add these calendars");
    EXPECT_TRUE(waitUntilSaid("push button 'Join Call: Planning' disabled"));
}

TEST_F(DesktopHost, ItsGalleryShowsDemonstrationEventsUntilThereAreCalendars) {
    letToolsListen();
    startDesktop({"--gallery"});
    EXPECT_TRUE(waitUntilSaid("The previews show demonstration events."));
    setUpCalendars();
    writeEvent("first.ics", "Planning", 1800);
    EXPECT_TRUE(waitUntilSaid("Planning"));
    EXPECT_FALSE(isSaid("demonstration"));
    closeWindow("Widgets");
    EXPECT_EQ(finish(*running).exitCode, 0) << "no widget was placed";
    running.reset();
}

}  // namespace
