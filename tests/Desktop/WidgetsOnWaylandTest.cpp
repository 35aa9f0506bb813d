#include "DesktopTest.h"

namespace {

using test::isNear;
using test::TestDesktop;
using test::waitUntil;

class WidgetsOnWayland : public test::DesktopTest {
  protected:
    static Place onSecond(Place place) { return {TestDesktop::leftOf(2) + place.x, place.y}; }
};

TEST_F(WidgetsOnWayland, LieBelowTheWindowsWithRoundCornersAndTakeClicks) {
    desktop.startWayland();
    showMedium();
    EXPECT_EQ(surfaces, "surfaces layer-shell");
    EXPECT_TRUE(isNear(colorAt(topEnd, {2, 2}), background, 40));
    EXPECT_FALSE(isNear(colorAt(topEnd, {mediumWidth / 2, mediumHeight + 3}), background, 4)) << "no shadow";
    click(topEnd, firstRow);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://preview/standup");
    click(topEnd, camera);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://joinCall/standup");
    // An ordinary window, which is tiled over the whole screen.
    program->order("gallery");
    EXPECT_TRUE(waitUntil([&] { return !isNear(colorAt(topEnd, ground), container, 1); }));
}

TEST_F(WidgetsOnWayland, TakeTheKeyboardWhenLifted) {
    desktop.startWayland();
    showMedium();
    program->order("lift");
    ASSERT_TRUE(isRingAt(topEnd, firstRow.y));
    screen().key("Tab");
    screen().key("Return");
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://joinCall/standup");
}

TEST_F(WidgetsOnWayland, AreAsLargeAsTheScaleOfTheirOutputSays) {
    desktop.startWayland(2);
    desktop.tellSway({"output", "X11-2", "scale", "2"});
    show({"medium top-end X11-1", "small top-start X11-2"});
    ASSERT_TRUE(isSeenAt(topEnd));
    const Place large = onSecond({40, 40});
    ASSERT_TRUE(isSeenAt(large));
    EXPECT_TRUE(isNear(colorAt(large, {2 * smallWidth - 8, 100}), container));
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(large, {2 * smallWidth + 36, 100}), background, 1); }));
    // Each of a letter's strokes is drawn for the scale, not enlarged: neighbours in a row differ.
    const auto picture = screen().picture();
    int unequalPairs = 0;
    for (int y = large.y + 106; y < large.y + 140; ++y) {
        for (int x = large.x + 56; x < large.x + 200; x += 2)
            unequalPairs += picture.at(x, y) == picture.at(x + 1, y) ? 0 : 1;
    }
    EXPECT_GT(unequalPairs, 100);
}

TEST_F(WidgetsOnWayland, MoveToAnotherOutputWhenTheirsGoes) {
    desktop.startWayland(2);
    show({"medium top-end X11-2"});
    ASSERT_TRUE(isSeenAt(onSecond(topEnd)));
    desktop.removeOutput(2);
    EXPECT_TRUE(isSeenAt(topEnd));
    click(topEnd, firstRow);
    EXPECT_EQ(program->waitForLine("opened"), "opened heedbanner://preview/standup");
    program->writeLine("outputs");
    EXPECT_EQ(program->waitForLine("output"), "output X11-1 1024x768 scale 1");
    program->waitForLine("done outputs");
}

TEST_F(WidgetsOnWayland, StayOnAScreenThatIsSmallerForAWhile) {
    desktop.startWayland();
    show({"small top-end X11-1 790 500"});
    const Place wished{790, 500};
    ASSERT_TRUE(isSeenAt(wished));
    // Half as many logical pixels: 512 x 384.
    desktop.tellSway({"output", "X11-1", "scale", "2"});
    const Place lowerEnd{TestDesktop::width - 2 * smallWidth, TestDesktop::height - 2 * smallHeight};
    EXPECT_TRUE(waitUntil([&] {
        return isNear(colorAt(lowerEnd, {40, 10}), container) &&
               isNear(colorAt(lowerEnd, {2 * smallWidth - 40, 2 * smallHeight - 10}), container);
    }));
    desktop.tellSway({"output", "X11-1", "scale", "1"});
    EXPECT_TRUE(isSeenAt(wished));
    EXPECT_TRUE(waitUntil([&] { return isNear(colorAt(wished, {-30, 100}), background, 1); }));
}

TEST_F(WidgetsOnWayland, AreX11WindowsOrPlainOnesWhereThereAreNoLayers) {
    desktop.startWaylandWithoutLayers(true);
    desktop.startWindowManager();
    showMedium();
    EXPECT_EQ(surfaces, "surfaces x11");
    program->end();

    desktop.variables.erase("DISPLAY");
    show({"medium top-end"});
    EXPECT_EQ(surfaces, "surfaces plain");
}

}  // namespace
