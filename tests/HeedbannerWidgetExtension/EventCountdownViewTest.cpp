#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>

#include <gmock/gmock.h>

#include "Drawing.h"

using namespace hbr;
using namespace platform;
using testing::ElementsAre;
using testing::StartsWith;
using Kind = LaidOutNode::Kind;
using enum WidgetFamily;

namespace {

LaidOutTree drawn(const test::Drawing& drawing, const NextEventEntry& entry, WidgetFamily family) {
    const auto inputs = drawing.inputs();
    return drawing.draw(NextEventCountdownWidgetView{entry, inputs}, family);
}

TEST(EventCountdownView, TurnsIntoATimerInTheLastMinute) {
    test::Drawing drawing;
    struct Case {
        double seconds;
        const char* text;
        bool isTimer;
        const char* said;
    };
    for (const auto& c : std::vector<Case>{{5700, "1h 35m", false, "Next event in 1 hour, 35 minutes. "},
                                           {90, "1m", false, "Next event in 1 minute. "},
                                           {60, "1m", false, "Next event in 1 minute. "},
                                           {59.5, "1:00", true, "1:00. "},
                                           {59, "0:59", true, "0:59. "},
                                           {0, "0:00", true, "0:00. "},
                                           {-75, "1:15", true, "1:15. "}}) {
        const Event event = drawing.event("1", c.seconds / 60, c.seconds / 60 + 30);
        const auto tree = drawn(drawing, {drawing.now, event}, systemMedium);
        EXPECT_EQ(test::nodesOf(tree.root, Kind::timer).size(), c.isTimer ? 1U : 0U) << c.seconds;
        ASSERT_GE(tree.texts().size(), 2U);
        EXPECT_EQ(tree.texts()[0], "NEXT EVENT IN");
        EXPECT_EQ(tree.texts()[1], c.text) << c.seconds;
        EXPECT_THAT(tree.links().at(0).label, StartsWith(c.said + std::string("Calendar event. Event 1. ")));
        EXPECT_EQ(test::nodesOf(tree.root, Kind::text).at(0)->frame.y, 16)
            << "as high as the lists' headline";
    }
}

TEST(EventCountdownView, OpensTheEventEverywhereAndTheCallOnTheCamera) {
    test::Drawing drawing;
    Event event = drawing.event("a b", 3, 30);
    event.videoConferenceLinks = {test::callLink()};
    for (const auto family : {systemSmall, systemMedium}) {
        const auto tree = drawn(drawing, {drawing.now, event}, family);
        EXPECT_THAT(test::targetsOf(tree),
                    ElementsAre("heedbanner://preview/a%20b", "heedbanner://joinCall/a%20b"));
        const Size size = sizeOf(family);
        EXPECT_EQ(tree.links()[0].frame, (Rect{16, 16, size.width - 32, size.height - 32}));
    }
}

TEST(EventCountdownView, WithoutAnEventSaysThatNothingComesUp) {
    test::Drawing drawing;
    const auto tree = drawn(drawing, {drawing.now, std::nullopt}, systemSmall);
    EXPECT_THAT(tree.texts(), ElementsAre("No upcoming events"));
    EXPECT_TRUE(tree.links().empty());
    const auto pictures = test::nodesOf(tree.root, Kind::picture);
    ASSERT_EQ(pictures.size(), 1U);
    EXPECT_EQ(pictures[0]->frame.height, 50);
    EXPECT_TRUE(drawing.world.diagnostics->all().empty());
}

}  // namespace
