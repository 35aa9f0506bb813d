#include <HeedbannerWidgetExtension/Views/EventListViews.h>

#include <gmock/gmock.h>

#include "Drawing.h"

using namespace hbr;
using namespace platform;
using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using Kind = LaidOutNode::Kind;
using enum WidgetFamily;

namespace {

std::vector<Event> events(const test::Drawing& drawing, int count, double startMinute, double endMinute) {
    std::vector<Event> events;
    for (int i = 1; i <= count; ++i)
        events.push_back(drawing.event(std::to_string(i), startMinute, endMinute));
    return events;
}

LaidOutTree upcoming(const test::Drawing& drawing, std::vector<Event> events, WidgetFamily family) {
    const UpcomingEventsEntry entry{drawing.now, std::move(events)};
    const auto inputs = drawing.inputs();
    return drawing.draw(UpcomingEventsWidgetView{entry, inputs}, family);
}

LaidOutTree current(const test::Drawing& drawing, std::vector<Event> events, WidgetFamily family) {
    const CurrentEventsEntry entry{drawing.now, std::move(events)};
    const auto inputs = drawing.inputs();
    return drawing.draw(CurrentEventsWidgetView{entry, inputs}, family);
}

TEST(UpcomingEventsView, ShowsAsManyRowsAsFitFromTheFirst) {
    test::Drawing drawing;
    for (const auto& [family, count, rows] :
         std::vector<std::tuple<WidgetFamily, int, std::size_t>>{{systemSmall, 6, 2},
                                                                 {systemMedium, 6, 3},
                                                                 {systemLarge, 6, 6},
                                                                 {systemLarge, 1, 1},
                                                                 {systemMedium, 2, 2}}) {
        const auto tree = upcoming(drawing, events(drawing, count, 30, 60), family);
        const auto links = tree.links();
        ASSERT_EQ(links.size(), rows) << nameOf(family);
        EXPECT_EQ(links[0].url.absoluteString(), "heedbanner://preview/1");
        EXPECT_LE(links.back().frame.bottom(), sizeOf(family).height - 16);
        EXPECT_THAT(tree.texts(), Each(Not(HasSubstr("more"))));
    }
}

TEST(EventLists, RowsAreUnderTheHeaderAndHigherWhenTheListIsFull) {
    test::Drawing drawing;
    const auto medium = upcoming(drawing, events(drawing, 3, 30, 60), systemMedium).links();
    ASSERT_EQ(medium.size(), 3U);
    EXPECT_EQ(medium[0].frame, (Rect{16, 34, 332, 32}));
    EXPECT_EQ(medium[1].frame, (Rect{16, 69, 332, 32}));
    EXPECT_EQ(medium[2].frame.bottom(), 16 + 120);
    const auto large = upcoming(drawing, events(drawing, 6, 30, 60), systemLarge).links();
    ASSERT_EQ(large.size(), 6U);
    EXPECT_EQ(large[0].frame, (Rect{16, 39, 332, 48}));
    EXPECT_EQ(large[5].frame.bottom(), 16 + 341);
    const auto five = upcoming(drawing, events(drawing, 5, 30, 60), systemLarge).links();
    EXPECT_EQ(five[4].frame.bottom(), 16 + 247);
    // Two of four, over the line that says so.
    const auto cut = current(drawing, events(drawing, 4, -30, 30), systemMedium);
    EXPECT_EQ(cut.links()[1].frame, (Rect{16, 34 + 46 + 3, 332, 46}));
}

TEST(EventLists, ARowIsSaidAsItsEventAndItsCameraEvenWhenItCannotJoinYet) {
    test::Drawing drawing;
    Event later = drawing.event("1", 30, 60);
    later.calendarName = "Work";
    later.videoConferenceLinks = {test::callLink()};
    Event soon = later;
    soon.startDate = drawing.now.addingTimeInterval(60);
    Event reminder = drawing.event("2", 40, 40);
    reminder.type = Event::EventType::hbrReminder;
    using Said = std::vector<std::pair<AccessibleElement::Role, std::string>>;
    const auto saidOf = [](const LaidOutTree& tree) {
        Said said;
        for (const auto& element : tree.accessibleElements())
            said.emplace_back(element.role, element.label);
        return said;
    };
    const auto row =
        testing::AllOf(testing::StartsWith("Calendar event. "), HasSubstr("Event 1"),
                       testing::EndsWith("video call. This event belongs to calendar \"Work\"."));
    using Role = AccessibleElement::Role;
    using testing::Pair;
    EXPECT_THAT(saidOf(upcoming(drawing, {later, soon, reminder}, systemMedium)),
                ElementsAre(Pair(Role::text, "UPCOMING EVENTS"), Pair(Role::link, row),
                            Pair(Role::inactiveLink, "Join Call: Event 1"), Pair(Role::link, row),
                            Pair(Role::link, "Join Call: Event 1"),
                            Pair(Role::link, testing::AllOf(testing::StartsWith("Reminder. Event 2. "),
                                                            testing::EndsWith("10:40.")))));
    const auto underWay = saidOf(current(drawing, events(drawing, 1, -30, 30), systemSmall));
    EXPECT_THAT(underWay.at(1).second, testing::EndsWith(". 30m remaining."));
}

TEST(UpcomingEventsView, TwoLongTitlesDoNotFitASmallWidget) {
    test::Drawing drawing;
    auto list = events(drawing, 3, 30, 60);
    list[0].title = "A title that takes two lines in any font that one could draw it in";
    EXPECT_EQ(upcoming(drawing, list, systemSmall).links().size(), 2U);
    list[1].title = list[0].title;
    EXPECT_EQ(upcoming(drawing, list, systemSmall).links().size(), 1U);
}

TEST(UpcomingEventsView, OccurrencesOfOneSeriesAreRowsOfTheirOwn) {
    test::Drawing drawing;
    const auto tree =
        upcoming(drawing, {drawing.event("s", 30, 60), drawing.event("s", 90, 120)}, systemMedium);
    EXPECT_THAT(test::targetsOf(tree), ElementsAre("heedbanner://preview/s", "heedbanner://preview/s"));
    EXPECT_THAT(tree.texts(), Contains("11:30–12:00"));
}

TEST(CurrentEventsView, SaysHowManyEventsItCannotShow) {
    test::Drawing drawing;
    for (const auto& [family, count, rows, overflow] :
         std::vector<std::tuple<WidgetFamily, int, std::size_t, std::string>>{
             {systemLarge, 3, 3, ""},
             {systemLarge, 4, 3, "1 more event"},
             {systemLarge, 5, 3, "2 more events"},
             {systemMedium, 3, 3, ""},
             {systemMedium, 4, 2, "2 more events"},
             {systemSmall, 2, 1, "1 more event"}}) {
        const auto tree = current(drawing, events(drawing, count, -30, 30), family);
        EXPECT_EQ(tree.links().size(), rows) << nameOf(family) << count;
        if (overflow.empty()) {
            EXPECT_THAT(tree.texts(), Each(Not(HasSubstr("more"))));
        } else {
            EXPECT_EQ(tree.texts().back(), overflow);
        }
    }
}

TEST(CurrentEventsView, DrawsItsRowsForTheEntryOrTwelveMinutesInForScreenshots) {
    test::Drawing drawing;
    const auto list = events(drawing, 1, -30, 30);
    const auto fraction = [&] {
        return test::nodesOf(current(drawing, list, systemMedium).root, Kind::progress).at(0)->fraction;
    };
    EXPECT_DOUBLE_EQ(fraction(), 0.5);
    drawing.settings.debugScreenshotMode = true;
    EXPECT_DOUBLE_EQ(fraction(), 0.2);
}

TEST(EventLists, WithoutEventsEachHasItsMessage) {
    test::Drawing drawing;
    EXPECT_THAT(upcoming(drawing, {}, systemSmall).texts(), ElementsAre("No upcoming events"));
    EXPECT_THAT(current(drawing, {}, systemLarge).texts(), ElementsAre("No current events"));
    drawing.settings.debugScreenshotMode = true;
    EXPECT_THAT(current(drawing, {}, systemLarge).texts(), ElementsAre("No current events"));
}

}  // namespace
