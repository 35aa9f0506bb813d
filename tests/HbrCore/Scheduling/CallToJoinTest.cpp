#include <HbrCore/CoreFixture.h>
#include <HbrCore/Scheduling/CallToJoin.h>
#include <gtest/gtest.h>

namespace {

using namespace hbr;
using test::meeting;

TEST(CallToJoin, PendingFirstThenTheOneBegunLastThenTheNextInsideItsLead) {
    const std::string call = "LOCATION:https://zoom.us/j/1\n";
    const std::string none;
    struct {
        const char* what;
        std::string items;
        const char* expected;
        std::int64_t lead = 60;
        std::int64_t days = 7;
    } const cases[] = {
        {"nothing", none, "-"},
        {"no link", meeting("a", "20260304T083000Z"), "-"},
        {"begun last", meeting("a", "20260304T083000Z", call) + meeting("b", "20260304T084500Z", call), "b"},
        {"begun last has none", meeting("a", "20260304T083000Z", call) + meeting("b", "20260304T084500Z"),
         "a"},
        {"pending", meeting("a", "20260304T083000Z", call) + meeting("b", "20260304T090030Z", call), "b"},
        {"pending has none", meeting("a", "20260304T083000Z", call) + meeting("b", "20260304T090030Z"), "a"},
        {"before its lead", meeting("a", "20260304T110000Z", call), "-"},
        {"inside a long lead",
         meeting("a", "20260304T120000Z", call) + meeting("b", "20260304T110000Z", call), "b", 4 * 3600},
        {"at its alert", meeting("a", "20260304T130000Z", call), "a", 4 * 3600},
        {"cancelled inside it", meeting("a", "20260304T110000Z", call + "STATUS:CANCELLED\n"), "-", 4 * 3600},
        {"excluded by a rule", meeting("excluded", "20260304T110000Z", call), "-", 4 * 3600},
        {"the last day", meeting("a", "20260305T225959Z", call), "a", 72 * 3600, 1},
        {"beyond the days", meeting("a", "20260305T230000Z", call), "-", 72 * 3600, 1}};
    for (const auto& one : cases) {
        test::CoreFixture core;
        core.write("calendars/work.ics", one.items);
        core.services().settings().setTimeOffsetSeconds(one.lead);
        core.services().settings().setUpcomingEventsDaysFilter(one.days);
        core.services().settings().setExcludeRules({{platform::Uuid::random(), FilterRule::Field::title,
                                                     FilterRule::ComparisonOperation::equals, "excluded"}});
        core.reloaded();
        const auto event = callToJoin(core.services());
        EXPECT_EQ(event ? *event->title : "-", one.expected) << one.what;
    }
}

TEST(CallToJoin, AnOwnReminderIsOfferedInsideItsLead) {
    test::CoreFixture core;
    core.services().reminders().addReminder(
        {"own", test::at("2026-03-04T09:10:00Z"), "https://zoom.us/j/1", std::nullopt, 600});
    core.reloaded();
    EXPECT_EQ(callToJoin(core.services())->id, "own");
    core.environment.setNow("2026-03-04T08:59:59Z");
    reloadAndWait(core.services());
    EXPECT_FALSE(callToJoin(core.services()));
}

}  // namespace
