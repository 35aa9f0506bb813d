#include <HeedbannerWidgetExtension/Views/EventDetailView.h>
#include <Views/Legibility.h>

#include <gmock/gmock.h>

#include "Drawing.h"

using namespace hbr;
using namespace platform;
using testing::Contains;
using testing::ElementsAre;
using testing::Not;
using Kind = LaidOutNode::Kind;
using Location = EventDetailView::CameraButtonLocation;
using enum WidgetFamily;

namespace {

/// The pill alone, as wide as a widget's content and as high as it wants to be.
LaidOutTree pill(const test::Drawing& drawing, const Event& event, WidgetFamily family,
                 EventDetailView::Configuration configuration = {}) {
    const auto context = drawing.context(family);
    const auto inputs = drawing.inputs();
    const auto view = EventDetailView{event, drawing.now, configuration, inputs}.body(context).fixedHeight();
    return layOut(view, {sizeOf(family).width - 32, 300}, context);
}

double heightOf(const LaidOutTree& tree) {
    return tree.root.children.at(0).frame.height;
}

TEST(EventDetailView, SaysTheDayAndTheTime) {
    test::Drawing drawing;
    const auto at = [&](const char* start, const char* end) {
        Event event = drawing.event("1", 0, 0);
        event.title = "Review";
        event.startDate = test::at(start);
        event.endDate = test::at(end);
        return event;
    };
    struct Case {
        const char *start, *end, *day, *time;
    };
    const std::vector<Case> cases = {
        {"2026-03-04T09:00:00Z", "2026-03-04T10:30:00Z", "Today", "10:00–11:30"},
        {"2026-03-04T22:59:00Z", "2026-03-04T22:59:00Z", "Today", "23:59"},
        {"2026-03-04T22:00:00Z", "2026-03-04T23:00:00Z", "Today", "23:00"},
        {"2026-03-04T23:00:00Z", "2026-03-05T00:00:00Z", "Tomorrow", "00:00–01:00"},
        {"2026-03-03T22:00:00Z", "2026-03-03T22:30:00Z", nullptr, "23:00–23:30"},
        {"2026-03-05T23:00:00Z", "2026-03-05T23:30:00Z", nullptr, "00:00–00:30"}};
    for (const auto& c : cases) {
        const Event event = at(c.start, c.end);
        const auto inputs = drawing.inputs();
        const std::string day =
            c.day ? c.day : inputs.formatters.dateOnlyNoYearWeekDay().string(event.startDate);
        EXPECT_THAT(pill(drawing, event, systemSmall).texts(), ElementsAre("Review", day, c.time)) << c.start;
        EXPECT_THAT(pill(drawing, event, systemMedium).texts(), ElementsAre("Review", day + ", ", c.time))
            << c.start;
    }
    Event moved = at("2026-03-04T09:00:00Z", "2026-03-04T10:00:00Z");
    moved.occurrenceDate = test::at("2026-03-05T09:00:00Z");
    EXPECT_THAT(pill(drawing, moved, systemLarge).texts(), Contains("Tomorrow, "));
}

TEST(EventDetailView, HasTheHeightsOfItsFamilies) {
    test::Drawing drawing;
    Event plain = drawing.event("1", 30, 60);
    Event longTitle = plain;
    longTitle.title = "A title that takes more than two lines of a small pill whatever font it is drawn in";
    Event travel = plain;
    travel.travelTime = 1800;
    struct Case {
        const char* name;
        const Event& event;
        WidgetFamily family;
        int lines;
        double height;
    };
    const std::vector<Case> cases = {{"medium", plain, systemMedium, 1, 32},
                                     {"large", plain, systemLarge, 1, 40},
                                     {"small", plain, systemSmall, 2, 46},
                                     {"small, two lines", longTitle, systemSmall, 2, 60},
                                     {"medium, one line", longTitle, systemMedium, 1, 32},
                                     {"medium, travel", travel, systemMedium, 1, 46},
                                     {"small, travel", travel, systemSmall, 2, 60}};
    for (const auto& c : cases) {
        EXPECT_EQ(heightOf(pill(drawing, c.event, c.family, {.titleLineLimit = c.lines})), c.height)
            << c.name;
    }
    const Event current = drawing.event("1", -30, 30);
    const EventDetailView::Configuration progress{.showsEventProgress = true};
    EXPECT_EQ(heightOf(pill(drawing, current, systemMedium, progress)), 38);
    EXPECT_EQ(heightOf(pill(drawing, current, systemSmall, progress)), 66);
}

TEST(EventDetailView, ShowsTravelTimeWhenThereIsSomeAndTheUserWantsIt) {
    test::Drawing drawing;
    Event event = drawing.event("1", 30, 60);
    for (const bool shows : {false, true}) {
        drawing.settings.includeTravelTime = true;
        event.travelTime = 1800;
        EXPECT_THAT(pill(drawing, event, systemMedium, {.showsTravelTime = shows}).texts(),
                    Contains("30m travel time"));
        EXPECT_THAT(pill(drawing, event, systemSmall, {.showsTravelTime = shows}).texts(), Contains("30m"));
        drawing.settings.includeTravelTime = false;
        EXPECT_EQ(pill(drawing, event, systemMedium, {.showsTravelTime = shows}).texts().size(), 3U);
        drawing.settings.includeTravelTime = true;
        event.travelTime = 0;
        EXPECT_EQ(pill(drawing, event, systemMedium, {.showsTravelTime = shows}).texts().size(), 3U);
    }
}

TEST(EventDetailView, ShowsProgressFromTheStartToTheEndOfAnEvent) {
    test::Drawing drawing;
    struct Case {
        double start, end;
        std::size_t rings;
        double fraction;
    };
    for (const auto& c : std::vector<Case>{
             {0, 60, 1, 0}, {-15, 45, 1, 0.25}, {-60, 0, 1, 1}, {0.02, 60, 0, 0}, {-60, -0.02, 0, 0}}) {
        const Event event = drawing.event("1", c.start, c.end);
        const auto tree = pill(drawing, event, systemMedium, {.showsEventProgress = true});
        const auto rings = test::nodesOf(tree.root, Kind::progress);
        ASSERT_EQ(rings.size(), c.rings) << c.start;
        if (!rings.empty()) {
            EXPECT_DOUBLE_EQ(rings[0]->fraction, c.fraction);
            EXPECT_EQ(rings[0]->frame.size(), (Size{12, 12}));
        }
        EXPECT_TRUE(test::nodesOf(pill(drawing, event, systemMedium).root, Kind::progress).empty());
    }
}

TEST(EventDetailView, MarksTheKindOfEvent) {
    test::Drawing drawing;
    Event event = drawing.event("1", 30, 30);
    const auto withBar = pill(drawing, event, systemMedium);
    const auto bars = test::nodesOf(withBar.root, Kind::shape);
    ASSERT_EQ(bars.size(), 2U);
    EXPECT_EQ(bars[0]->frame.width, 332);
    EXPECT_EQ(bars[1]->frame, (Rect{12, bars[0]->frame.y + 2, 3, 28}));
    event.type = Event::EventType::appleReminder;
    const auto withCircle = pill(drawing, event, systemMedium);
    const auto circle = test::nodesOf(withCircle.root, Kind::symbol);
    ASSERT_EQ(circle.size(), 1U);
    EXPECT_EQ(circle[0]->text, "circle");
    EXPECT_EQ(circle[0]->frame, (Rect{12, bars[0]->frame.y + 7, 10, 10}));
    event.type = Event::EventType::hbrReminder;
    EXPECT_EQ(test::nodesOf(pill(drawing, event, systemMedium).root, Kind::symbol).at(0)->text, "alarm.fill");
}

TEST(EventDetailView, PutsTheCameraAtTheEndOfTheRow) {
    test::Drawing drawing;
    Event event = drawing.event("1", 3, 30);
    event.videoConferenceLinks = {test::callLink()};
    for (const auto& [family, location] :
         {std::pair(systemMedium, Location::center), std::pair(systemSmall, Location::inline_)}) {
        const auto tree = pill(drawing, event, family, {.cameraButtonLocation = location});
        ASSERT_EQ(tree.links().size(), 1U);
        const auto frame = tree.links()[0].frame;
        EXPECT_DOUBLE_EQ(frame.right(), tree.size.width - 4);
        EXPECT_EQ(frame.size(), (Size{28, 16}));
    }
}

TEST(CameraButton, IsActiveWhilePendingOrUnderWay) {
    test::Drawing drawing;
    drawing.appearance = Appearance::dark;
    const auto& palette = Palette::of(Appearance::dark);
    EventSettings excluded{.isExcluded = true};
    EventSettings tenMinutes{.usesCustomTimeOffset = true, .timeOffsetSeconds = 600};
    struct Case {
        const char* name;
        double start, end;
        std::optional<EventSettings> settings;
        bool isActive;
        Color color;
    };
    const Color calendar = drawing.event("1", 0, 0).color.withAlpha(0.3);
    const Color capsuleGround = blended(palette.gray.withAlpha(0.3), blended(calendar, palette.container));
    const Color faint = legibleTranslucent(Palette::disabled(palette.primary), capsuleGround, 3.0);
    const std::vector<Case> cases = {{"at the lead", 5, 30, {}, false, faint},
                                     {"inside the lead", 4.9, 30, {}, true, palette.orange},
                                     {"at the start", 0, 30, {}, true, palette.green},
                                     {"under way", -10, 30, {}, true, palette.green},
                                     {"at the end", -30, 0, {}, true, palette.green},
                                     {"after the end", -30, -0.1, {}, false, faint},
                                     {"excluded", 4, 30, excluded, false, faint},
                                     {"excluded, under way", -1, 30, excluded, true, palette.green},
                                     {"a lead of its own", 9, 30, tenMinutes, true, palette.orange}};
    for (const auto& c : cases) {
        Event event = drawing.event("1", c.start, c.end);
        event.videoConferenceLinks = {test::callLink()};
        drawing.settings.eventSettings.clear();
        if (c.settings) drawing.settings.eventSettings.emplace("1", *c.settings);
        const auto tree = pill(drawing, event, systemMedium);
        const auto symbols = test::nodesOf(tree.root, Kind::symbol);
        ASSERT_EQ(symbols.size(), 1U) << c.name;
        EXPECT_EQ(symbols[0]->text, "video.fill");
        EXPECT_EQ(symbols[0]->color, c.color) << c.name;
        EXPECT_EQ(test::targetsOf(tree), c.isActive ? std::vector<std::string>{"heedbanner://joinCall/1"}
                                                    : std::vector<std::string>{})
            << c.name;
        const auto capsule = test::nodesOf(tree.root, Kind::shape).back();
        EXPECT_DOUBLE_EQ(capsule->color->alpha, c.isActive ? 0.5 : 0.3) << c.name;
    }
    EXPECT_TRUE(
        test::nodesOf(pill(drawing, drawing.event("1", 0, 30), systemMedium).root, Kind::symbol).empty());
}

}  // namespace
