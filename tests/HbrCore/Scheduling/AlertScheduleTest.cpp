#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using test::at;

TEST(AlertSchedule, TheAlertLiesItsLeadBeforeTheStart) {
    const AlertSettings minute;
    const AlertSettings withTravel{.includeTravelTime = true};
    const EventSettings tenMinutes{.usesCustomTimeOffset = true, .timeOffsetSeconds = 600};
    const EventSettings excluded{.isExcluded = true};
    const std::tuple<AlertSettings, std::optional<EventSettings>, const char*, const char*> cases[] = {
        {minute, {}, "2026-03-04T09:58:00Z", "2026-03-04T09:59:00.000Z"},
        {minute, {}, "2026-03-04T09:59:00Z", "2026-03-04T09:59:00.000Z"},
        {minute, {}, "2026-03-04T09:59:01Z", "none"},
        {minute, tenMinutes, "2026-03-04T09:00:00Z", "2026-03-04T09:50:00.000Z"},
        {withTravel, tenMinutes, "2026-03-04T09:00:00Z", "2026-03-04T09:35:00.000Z"},
        {withTravel, {}, "2026-03-04T09:00:00Z", "2026-03-04T09:44:00.000Z"},
        {minute, excluded, "2026-03-04T09:00:00Z", "none"}};
    Event event;
    event.startDate = at("2026-03-04T10:00:00Z");
    event.travelTime = 900;
    for (const auto& [settings, eventSettings, now, expected] : cases) {
        const auto alert = alertDate(event, settings, eventSettings, at(now));
        EXPECT_EQ(alert ? platform::formatRfc3339(*alert) : "none", expected) << now;
    }
}

TEST(AlertSchedule, AnOwnRemindersAlertLiesStrictlyAhead) {
    test::TestEnvironment environment("2026-03-04T10:00:00Z");
    const VideoConferenceLinkParser parser(environment);
    const AlertSchedule schedule({.includeTravelTime = true}, std::nullopt, parser, environment->calendar,
                                 environment->now());
    const std::vector<Reminder> reminders = {{"now", at("2026-03-04T10:00:00Z"), "", "", 0},
                                             {"late", at("2026-03-04T10:01:00Z"), "", "", 60},
                                             {"ahead", at("2026-03-04T10:01:01Z"), "", "", 60}};
    std::vector<AlertInvocation> alerts;
    schedule.append(reminders, alerts);
    ASSERT_EQ(alerts.size(), 1u);
    EXPECT_EQ(alerts[0].id(), "ahead.1772618401.0");
    EXPECT_EQ(alerts[0].debugDescription(), ", 2026-03-04 10:00:01 +0000, isSnooze: false");
}

}  // namespace
