#include "DesktopTest.h"

namespace {

using test::isNear;
using test::waitUntil;

constexpr int width = test::TestDesktop::width, height = test::TestDesktop::height;

class WidgetsOnX11 : public test::DesktopTest {
  protected:
    void SetUp() override { desktop.startWindowManager(); }
};

TEST_F(WidgetsOnX11, AreRoundWithAShadowWhereWindowsAreBlendedAndSquareElsewhereLive) {
    showMedium();
    EXPECT_EQ(surfaces, "surfaces x11");
    const Place corner{2, 2}, below{mediumWidth / 2, mediumHeight + 3};
    EXPECT_TRUE(isNear(colorAt(topEnd, corner), container));
    EXPECT_TRUE(isNear(colorAt(topEnd, below), background, 0));

    desktop.startBlending();
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, corner), background, 40); }));
    EXPECT_TRUE(isSeenAt(topEnd));
    EXPECT_FALSE(isNear(colorAt(topEnd, below), background, 4)) << "no shadow";
    EXPECT_TRUE(isNear(colorAt(topEnd, {mediumWidth / 2, mediumHeight + 17}), background, 1));

    desktop.stopBlending();
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, corner), container); }));
}

TEST_F(WidgetsOnX11, AreInColumnsBelowEverything) {
    show({"medium top-end", "medium top-end", "small bottom-start", "medium top-end", "medium top-end"});
    const int step = mediumHeight + 12;
    EXPECT_TRUE(isSeenAt(topEnd));
    EXPECT_TRUE(isSeenAt({topEnd.x, topEnd.y + step}));
    EXPECT_TRUE(isSeenAt({topEnd.x, topEnd.y + 2 * step}));
    // The screen ends below the third.
    EXPECT_TRUE(isSeenAt({topEnd.x - 12 - mediumWidth, topEnd.y}));
    EXPECT_TRUE(waitUntil([&] {
        return isNear(screen().picture().at(20 + smallWidth / 2, height - 20 - smallHeight + 20), container);
    }));
    for (const auto& window : screen().windowsTitled("Upcoming events")) {
        const auto type = screen().atoms(window.id, "_NET_WM_WINDOW_TYPE");
        const auto state = screen().atoms(window.id, "_NET_WM_STATE");
        EXPECT_EQ(type, std::vector<std::string>{"_NET_WM_WINDOW_TYPE_DESKTOP"});
        for (const char* wanted :
             {"_NET_WM_STATE_BELOW", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"})
            EXPECT_NE(std::find(state.begin(), state.end(), wanted), state.end()) << wanted;
    }
    // No room for it in the corner below three of the others.
    program->order("add small bottom-end");
    const int besideThem = topEnd.x - 12 - smallWidth;
    const auto isBelow = [&](int x) {
        return waitUntil(
            [&] { return isNear(screen().picture().at(x + smallWidth / 2, height - 40), container); });
    };
    EXPECT_TRUE(isBelow(besideThem));
    program->order("remove");
    // What remains closes the gap.
    program->order("remove");
    program->order("remove");
    EXPECT_TRUE(isGoneFrom({topEnd.x, topEnd.y + 2 * step}));
}

TEST_F(WidgetsOnX11, OpenWhatIsUnderThePointerAndShowIt) {
    showMedium();
    const auto plain = colorAt(topEnd, firstRow);
    screen().movePointer(topEnd.x + firstRow.x, topEnd.y + firstRow.y);
    EXPECT_TRUE(waitUntil([&] { return colorAt(topEnd, firstRow) != plain; }));
    click(topEnd, firstRow);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://preview/standup");
    click(topEnd, camera);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://joinCall/standup");
    EXPECT_TRUE(waitUntil([&] { return colorAt(topEnd, firstRow) == plain; }));
    click(topEnd, secondRow);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://preview/lunch");
}

TEST_F(WidgetsOnX11, AreDraggedWithoutOpeningAnything) {
    showMedium();
    screen().movePointer(topEnd.x + firstRow.x, topEnd.y + firstRow.y);
    screen().press();
    for (int step = 1; step <= 10; ++step)
        screen().movePointer(topEnd.x + firstRow.x - 30 * step, topEnd.y + firstRow.y + 20 * step);
    const Place there{topEnd.x - 300, topEnd.y + 200};
    EXPECT_TRUE(isSeenAt(there));
    screen().release();
    EXPECT_EQ(program->waitForLine("moved"),
              "moved top-end screen " + std::to_string(there.x) + "," + std::to_string(there.y));
    EXPECT_TRUE(isSeenAt(there));
    program->writeLine("draws");
    EXPECT_TRUE(program->waitForLine("views made").has_value());
}

TEST_F(WidgetsOnX11, ChangeSizeAndCornerAndGoFromTheirMenu) {
    showMedium();
    const auto choose = [&](std::initializer_list<const char*> keys, Place where = {6, 100}) {
        screen().key("Escape");
        const auto before = screen().windowCount();
        click(topEnd, where, 3);
        EXPECT_TRUE(waitUntil([&] { return screen().windowCount() > before; })) << "no menu";
        for (const char* key : keys)
            screen().key(key);
    };
    choose({"Down", "Return"}, firstRow);
    EXPECT_EQ(program->waitForLine("item"), "item heedbanner://preview/standup");
    choose({"Up", "Right", "Return"});
    EXPECT_TRUE(program->waitForLine("toggled"));
    choose({"Down", "Right", "Down", "Down", "Return"});
    EXPECT_EQ(program->waitForLine("family"), "family large");
    choose({"Down", "Down", "Down", "Return"});
    EXPECT_EQ(program->waitForLine("gallery"), "gallery wanted");
    choose({"Down", "Down", "Right", "Down", "Down", "Return"});
    EXPECT_EQ(program->waitForLine("moved"), "moved bottom-start ");
    EXPECT_TRUE(isSeenAt({20, height - 20 - 478}));
}

TEST_F(WidgetsOnX11, TakeTheKeyboardWhenLiftedAndGiveItBack) {
    show({"medium top-end", "medium top-end"});
    ASSERT_TRUE(isSeenAt(topEnd));
    const Place second{topEnd.x, topEnd.y + mediumHeight + 12};
    program->order("lift");
    EXPECT_TRUE(isRingAt(topEnd, firstRow.y));
    screen().key("Return");
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://preview/standup");
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, {16, firstRow.y}), container, 60); }))
        << "not lowered";

    program->order("lift");
    EXPECT_TRUE(isRingAt(topEnd, firstRow.y));
    screen().key("Tab");
    screen().key("Down");
    EXPECT_TRUE(isRingAt(topEnd, secondRow.y));
    screen().key("Tab");
    EXPECT_TRUE(isRingAt(second, firstRow.y));
    screen().key("Right");
    screen().key("space");
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://joinCall/standup");

    program->order("lift");
    EXPECT_TRUE(isRingAt(topEnd, firstRow.y));
    screen().key("Escape");
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, {16, firstRow.y}), container, 60); }));

    // Also in haste.
    for (int time = 0; time < 8 && !HasFailure(); ++time) {
        program->order("lift");
        program->order("lower");
        program->order("lift");
        EXPECT_TRUE(isRingAt(topEnd, firstRow.y)) << time;
    }
}

TEST_F(WidgetsOnX11, TickWithoutMakingTheirViewsAgainAndOnlyWhereTheTextIs) {
    showMedium(3590);
    const auto before = screen().picture();
    ASSERT_TRUE(waitUntil([&] { return screen().picture().differences(before, 0) > 0; }));
    const auto after = screen().picture();
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const bool isInText =
                x > topEnd.x + 370 && x < topEnd.x + 440 && y > topEnd.y + 120 && y < topEnd.y + 155;
            if (isInText) continue;
            ASSERT_EQ(before.at(x, y), after.at(x, y)) << x << ", " << y;
        }
    }
    program->writeLine("draws");
    EXPECT_EQ(program->waitForLine("views made"), "views made 1");
}

TEST_F(WidgetsOnX11, ShowABadge) {
    showMedium();
    program->order("badge Two accounts cannot be read");
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(topEnd, {mediumWidth - 22, 17}), 0xD95F00, 12); }));
}

}  // namespace
