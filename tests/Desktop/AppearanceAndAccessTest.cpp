#include "DesktopTest.h"

namespace {

using test::isNear;
using test::TestDesktop;
using test::waitUntil;

constexpr int width = TestDesktop::width;

class DesktopAppearance : public test::DesktopTest {};

TEST_F(DesktopAppearance, IsThatOfTheSettingsPortalLive) {
    const auto portal = desktop.start({"/usr/bin/python3", TestDesktop::script("settings-portal.py")});
    ASSERT_TRUE(portal->waitForLine("ready"));
    portal->order("org.freedesktop.appearance color-scheme uint32 1");
    show({"medium top-end"});
    EXPECT_TRUE(isSeenAt(topEnd, darkContainer));
    portal->order("org.freedesktop.appearance color-scheme uint32 2");
    EXPECT_TRUE(isSeenAt(topEnd, container));

    portal->order("org.freedesktop.appearance contrast uint32 1");
    // The border is nearly black then.
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, {mediumWidth / 2, 0}), 0x636363, 24); }));

    portal->order("org.gnome.desktop.interface text-scaling-factor 1.5");
    const Place larger{width - 20 - 683, 20};
    EXPECT_TRUE(isSeenAt(larger, container));
    EXPECT_TRUE(isNear(colorAt(larger, {20, 319 - 20}), container));
}

TEST_F(DesktopAppearance, OfAPortalThatHasToBeStartedIsThatOfTheFirstFrame) {
    desktop.home().write("data/dbus-1/services/org.freedesktop.portal.Desktop.service",
                         "[D-BUS Service]\nName=org.freedesktop.portal.Desktop\nExec=/usr/bin/python3 " +
                             TestDesktop::script("settings-portal.py") +
                             " \"org.freedesktop.appearance color-scheme uint32 1\"\n");
    show({"medium top-end"});
    EXPECT_TRUE(waitUntil([&] {
        const std::uint32_t color = colorAt(topEnd, ground);
        EXPECT_FALSE(isNear(color, container)) << "first without the portal's wish";
        return isNear(color, darkContainer);
    }));
}

class Accessibility : public test::DesktopTest {};

TEST_F(Accessibility, NamesTheTextsAndEachTargetWhichCanBeActivated) {
    showMedium();
    program->order("badge Two accounts cannot be read");
    const auto script = TestDesktop::script("accessible.py");
    const std::string tree = desktop.run({"/usr/bin/python3", script, "desktop-test"});
    for (const char* line :
         {"frame 'Upcoming events'", "image 'Upcoming events'", "push button 'Stand-up' click",
          "push button 'Join call' click", ". Lunch' click", "'Two accounts cannot be read'"})
        EXPECT_NE(tree.find(line), std::string::npos) << line << " is not in\n" << tree;

    desktop.run({"/usr/bin/python3", script, "desktop-test", "Join call"});
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://joinCall/standup");
}

TEST_F(Accessibility, IsNotNotifiedOfEachTickOfATimer) {
    showMedium();
    const auto listener =
        desktop.start({"/usr/bin/python3", TestDesktop::script("accessible-changes.py"), "desktop-test"});
    ASSERT_TRUE(listener->waitForLine("listening"));
    for (int tick = 0; tick < 3; ++tick) {
        const auto before = screen().picture();
        ASSERT_TRUE(waitUntil([&] { return screen().picture().differences(before, 0) > 0; }));
    }
    program->order("title Another");
    const auto reported = listener->waitForLine("changed");
    EXPECT_TRUE(reported && reported->find("'Another'") != std::string::npos) << reported.value_or("nothing");
}

TEST_F(Accessibility, ReachesTheGalleryAndTheCard) {
    desktop.startWindowManager();
    show({});
    const auto act = [&](const std::string& name) {
        desktop.run({"/usr/bin/python3", TestDesktop::script("accessible.py"), "desktop-test", name});
    };
    program->order("gallery");
    for (int round = 0; round < 2; ++round) {
        act("Add: Upcoming events, Large");
        EXPECT_EQ(program->waitForLine("added"), "added test.rows large");
        act("Remove: Upcoming events, Large");
        EXPECT_EQ(program->waitForLine("taken"), "taken away test.rows large");
    }

    program->order("card");
    act("Show in calendar");
    EXPECT_EQ(program->waitForLine("card closed"), "card closed");
    EXPECT_EQ(program->waitForLine("chose"), "chose calendar");
    program->order("card");
    act("Until it begins");
    EXPECT_EQ(program->waitForLine("chose"), "chose start");
}

class Windows : public test::DesktopTest {
  protected:
    void SetUp() override { desktop.startWindowManager(); }
    /// The program's window of that title, in its place.
    test::VirtualScreen::Window awaited(const std::string& title) {
        std::vector<test::VirtualScreen::Window> found;
        EXPECT_TRUE(waitUntil([&] { return !(found = screen().windowsTitled(title)).empty(); })) << title;
        return found.empty() ? test::VirtualScreen::Window{} : found.front();
    }
};

TEST_F(Windows, ACardTakesTheKeyboardAndEndsWithEscape) {
    show({});
    for (const auto& [key, line] : {std::pair("Return", "chose join"), std::pair("Escape", "card closed")}) {
        program->order("card");
        const auto card = awaited("Stand-up").id;
        EXPECT_TRUE(waitUntil([&] { return screen().isFocused(card); }));
        screen().key(key);
        EXPECT_EQ(program->waitForLine(std::string_view(line).substr(0, 5)), line);
    }
    EXPECT_TRUE(waitUntil([&] { return screen().windowsTitled("Stand-up").empty(); }));
}

TEST_F(Windows, ACardThatComesByItselfTakesNoKeysFromAPersonWhoTypes) {
    show({});
    const char* text[] = {"h", "e", "l", "l", "o", "space", "Return", "Escape"};
    const auto type = [&] {
        for (const char* key : text)
            screen().key(key);
    };
    // The keyboard goes to the card, as some desktops do it.
    program->order("card by itself");
    const auto card = awaited("Stand-up").id;
    EXPECT_FALSE(screen().isFocused(card));
    screen().focusWindow(card);
    EXPECT_TRUE(waitUntil([&] { return screen().isFocused(card); }));
    for (int line = 0; line < 5; ++line)
        type();
    program->order("draws");
    EXPECT_FALSE(screen().windowsTitled("Stand-up").empty());
    // After a pause the keys mean the card. On a busy machine the keys above may still be on their way.
    constexpr double keyDelay = 1;
    double lastKey = test::secondsNow();
    EXPECT_TRUE(waitUntil([&] {
        if (test::secondsNow() < lastKey + keyDelay) return false;
        screen().key("Return");
        screen().key("Escape");
        lastKey = test::secondsNow();
        return screen().windowsTitled("Stand-up").empty();
    }));
    EXPECT_TRUE(program->waitForLine("card closed"));
    program->writeLine("quit");
    EXPECT_EQ(program->readToEnd().find("chose"), std::string::npos);
}

TEST_F(Windows, ALinkInTheNotesOfACardIsOpened) {
    show({});
    program->order("card");
    const auto card = awaited("Stand-up");
    // "https://maps.example/room4" in the line of the place.
    screen().click(card.x + 130, card.y + 118);
    EXPECT_EQ(program->waitForLine("opened"), "opened https://maps.example/room4");
}

}  // namespace
