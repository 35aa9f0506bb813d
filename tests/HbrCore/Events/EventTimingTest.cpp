#include <HbrCore/Events/EventTiming.h>
#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using test::at;

Event tenToEleven() {
    Event event;
    event.startDate = at("2026-03-04T10:00:00Z");
    event.endDate = at("2026-03-04T11:00:00Z");
    return event;
}

TEST(EventTiming, BoundsOfCurrentAndFinished) {
    struct Case {
        const char* now;
        bool isCurrent;
        bool isFinished;
        double timeLeft;
        double progress;
    };
    const Case cases[] = {
        {"2026-03-04T09:59:59Z", false, false, 0, 0},     {"2026-03-04T10:00:00Z", true, false, 3600, 0},
        {"2026-03-04T10:15:00Z", true, false, 2700, .25}, {"2026-03-04T11:00:00Z", true, false, 0, 1},
        {"2026-03-04T11:00:01Z", false, false, 0, 0},     {"2026-03-04T11:29:59Z", false, false, 0, 0},
        {"2026-03-04T11:30:00Z", false, true, 0, 0}};
    for (const Case& c : cases) {
        const auto now = at(c.now);
        EXPECT_EQ(isCurrentEvent(tenToEleven(), now), c.isCurrent) << c.now;
        EXPECT_EQ(isFinished(tenToEleven(), now), c.isFinished) << c.now;
        EXPECT_EQ(timeLeft(tenToEleven(), now), c.timeLeft) << c.now;
        EXPECT_EQ(eventProgress(tenToEleven(), now), c.progress) << c.now;
    }
    Event moment = tenToEleven();
    moment.endDate = moment.startDate;
    EXPECT_EQ(eventProgress(moment, moment.startDate), 1);
}

TEST(EventTiming, ThePendingPeriodOpensAfterTheAlertAndClosesWithTheStart) {
    const EventSettings excluded{.isExcluded = true, .usesCustomTimeOffset = true, .timeOffsetSeconds = 600};
    const EventSettings tenMinutes{.usesCustomTimeOffset = true, .timeOffsetSeconds = 600};
    const EventSettings unused{.usesCustomTimeOffset = false, .timeOffsetSeconds = 600};
    const std::tuple<const char*, double, std::optional<EventSettings>, bool> cases[] = {
        {"2026-03-04T09:55:00Z", 300, {}, false},         {"2026-03-04T09:55:01Z", 300, {}, true},
        {"2026-03-04T10:00:00Z", 300, {}, true},          {"2026-03-04T10:00:01Z", 300, {}, false},
        {"2026-03-04T10:00:00Z", 0, {}, false},           {"2026-03-04T09:51:00Z", 300, tenMinutes, true},
        {"2026-03-04T09:50:00Z", 300, tenMinutes, false}, {"2026-03-04T09:54:00Z", 300, unused, false},
        {"2026-03-04T09:58:00Z", 300, excluded, false}};
    for (const auto& [now, offset, settings, expected] : cases) {
        EXPECT_EQ(isPending(tenToEleven(), offset, settings, at(now)), expected) << now;
    }
}

TEST(EventTiming, StartsWithinLeavesOutBothBounds) {
    const auto start = at("2026-03-04T10:00:00Z");
    EXPECT_FALSE(startsWithin(tenToEleven(), 60, start));
    EXPECT_FALSE(startsWithin(tenToEleven(), 60, start.addingTimeInterval(-60)));
    EXPECT_TRUE(startsWithin(tenToEleven(), 60, start.addingTimeInterval(-59)));
    EXPECT_FALSE(isInFuture(tenToEleven(), start));
}

TEST(EventTiming, TheDefaultLinkIsTheOnlyOneOrTheChosenOne) {
    const VideoConferenceLink first{VideoConferenceService::zoom(),
                                    platform::Url::parse("https://zoom.us/j/1").value()};
    const VideoConferenceLink second{VideoConferenceService::zoom(),
                                     platform::Url::parse("https://zoom.us/j/2").value()};
    Event event = tenToEleven();
    EventSettings chosen;
    chosen.defaultConferenceUrl = second.url;
    EXPECT_FALSE(defaultVideoConferenceLink(event, chosen));
    event.videoConferenceLinks = {first};
    EXPECT_EQ(defaultVideoConferenceLink(event, chosen), first);
    event.videoConferenceLinks = {first, second};
    EXPECT_FALSE(defaultVideoConferenceLink(event, std::nullopt));
    EXPECT_EQ(defaultVideoConferenceLink(event, chosen), second);
}

}  // namespace
