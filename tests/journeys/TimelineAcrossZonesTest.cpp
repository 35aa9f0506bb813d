#include "Journey.h"

#include <TimeAndText/Date.h>

#include <algorithm>

namespace {

using test::Journey;

class TimelineAcrossZones : public Journey {};

struct Expectation {
    std::string zone;
    std::string now;
    /// The first six upcoming events: start in UTC and title.
    std::vector<std::string> events;
};

/// The clocks change on 8 March (New York) and on 29 March (Berlin); Mexico City and Kolkata keep theirs.
/// "Tea" is at eight wherever the user is; everything else has a zone of its own.
const std::vector<Expectation> expectations = {
    {"Europe/Berlin",
     "2026-03-07T11:00:00Z",
     {"2026-03-07T12:00:00.000Z Run", "2026-03-07T12:30:00.000Z हिन्दी बैठक", "2026-03-07T14:00:00.000Z Choir",
      "2026-03-08T06:00:00.000Z Check-up", "2026-03-08T07:00:00.000Z Tea", "2026-03-09T07:00:00.000Z Tea"}},
    {"Europe/Berlin",
     "2026-03-28T06:00:00Z",
     {"2026-03-28T06:30:00.000Z Check-up", "2026-03-28T07:00:00.000Z Plant call",
      "2026-03-28T07:00:00.000Z Tea", "2026-03-28T07:30:00.000Z Water the plants",
      "2026-03-28T11:00:00.000Z Maybe", "2026-03-28T15:30:00.000Z Choir, later"}},
    {"Europe/Berlin",
     "2026-03-28T23:30:00Z",
     {"2026-03-29T01:30:00.000Z Gap", "2026-03-29T06:00:00.000Z Tea", "2026-03-29T08:00:00.000Z Talk",
      "2026-03-29T09:30:00.000Z Review", "2026-03-29T10:00:00.000Z Market", "2026-03-30T06:00:00.000Z Tea"}},
    {"America/New_York",
     "2026-03-07T11:00:00Z",
     {"2026-03-07T12:00:00.000Z Run", "2026-03-07T12:30:00.000Z हिन्दी बैठक", "2026-03-07T13:00:00.000Z Tea",
      "2026-03-07T14:00:00.000Z Choir", "2026-03-08T06:00:00.000Z Check-up", "2026-03-08T12:00:00.000Z Tea"}},
    {"America/New_York",
     "2026-03-28T06:00:00Z",
     {"2026-03-28T06:30:00.000Z Check-up", "2026-03-28T07:00:00.000Z Plant call",
      "2026-03-28T07:30:00.000Z Water the plants", "2026-03-28T11:00:00.000Z Maybe",
      "2026-03-28T12:00:00.000Z Tea", "2026-03-28T15:30:00.000Z Choir, later"}},
    {"America/New_York",
     "2026-03-28T23:30:00Z",
     {"2026-03-29T01:30:00.000Z Gap", "2026-03-29T08:00:00.000Z Talk", "2026-03-29T09:30:00.000Z Review",
      "2026-03-29T10:00:00.000Z Market", "2026-03-29T12:00:00.000Z Tea", "2026-03-30T07:00:00.000Z Standup"}},
    {"Asia/Kolkata",
     "2026-03-07T11:00:00Z",
     {"2026-03-07T12:00:00.000Z Run", "2026-03-07T12:30:00.000Z हिन्दी बैठक", "2026-03-07T14:00:00.000Z Choir",
      "2026-03-08T02:30:00.000Z Tea", "2026-03-08T06:00:00.000Z Check-up", "2026-03-09T02:30:00.000Z Tea"}},
    {"Asia/Kolkata",
     "2026-03-28T06:00:00Z",
     {"2026-03-28T06:30:00.000Z Check-up", "2026-03-28T07:00:00.000Z Plant call",
      "2026-03-28T07:30:00.000Z Water the plants", "2026-03-28T11:00:00.000Z Maybe",
      "2026-03-28T15:30:00.000Z Choir, later", "2026-03-29T01:30:00.000Z Gap"}},
    {"Asia/Kolkata",
     "2026-03-28T23:30:00Z",
     {"2026-03-29T01:30:00.000Z Gap", "2026-03-29T02:30:00.000Z Tea", "2026-03-29T08:00:00.000Z Talk",
      "2026-03-29T09:30:00.000Z Review", "2026-03-29T10:00:00.000Z Market", "2026-03-30T02:30:00.000Z Tea"}},
    {"America/Mexico_City",
     "2026-03-07T11:00:00Z",
     {"2026-03-07T12:00:00.000Z Run", "2026-03-07T12:30:00.000Z हिन्दी बैठक", "2026-03-07T14:00:00.000Z Choir",
      "2026-03-07T14:00:00.000Z Tea", "2026-03-08T06:00:00.000Z Check-up", "2026-03-08T14:00:00.000Z Tea"}},
    {"America/Mexico_City",
     "2026-03-28T06:00:00Z",
     {"2026-03-28T06:30:00.000Z Check-up", "2026-03-28T07:00:00.000Z Plant call",
      "2026-03-28T07:30:00.000Z Water the plants", "2026-03-28T11:00:00.000Z Maybe",
      "2026-03-28T14:00:00.000Z Tea", "2026-03-28T15:30:00.000Z Choir, later"}},
    {"America/Mexico_City",
     "2026-03-28T23:30:00Z",
     {"2026-03-29T01:30:00.000Z Gap", "2026-03-29T08:00:00.000Z Talk", "2026-03-29T09:30:00.000Z Review",
      "2026-03-29T10:00:00.000Z Market", "2026-03-29T14:00:00.000Z Tea", "2026-03-30T07:00:00.000Z Standup"}},
};

TEST_F(TimelineAcrossZones, TwentyFilesGiveTheRightUpcomingEventsWhereverTheUserIs) {
    ASSERT_EQ(companion({"setup", calendars(), "--email", "me@example.org"}).exitCode, 0);
    for (const auto& [zone, now, events] : expectations) {
        SCOPED_TRACE(zone + " " + now);
        variables["TZ"] = zone;
        const auto outcome = widgets({"timeline", "upcoming", "--json", "--now", now});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
        const auto timeline = json(outcome);
        const auto* entries = timeline.find("entries") ? timeline.find("entries")->asArray() : nullptr;
        ASSERT_TRUE(entries && entries->size() == 1) << outcome.out;
        const auto* listed = entries->front().find("events");
        ASSERT_TRUE(listed && listed->asArray());
        std::vector<std::string> found;
        std::vector<std::string> starts;
        for (const auto& event : *listed->asArray()) {
            starts.push_back(*event.find("startDate")->asString());
            found.push_back(starts.back() + " " + *event.find("title")->asString());
        }
        EXPECT_TRUE(std::is_sorted(starts.begin(), starts.end()));
        // Which of two with the same start comes first is settled by identifiers.
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, events);
        const auto soon = platform::parseRfc3339(now)->addingTimeInterval(60);
        EXPECT_EQ(*timeline.find("policy")->find("after")->asString(), platform::formatRfc3339(soon));
    }
}

TEST_F(TimelineAcrossZones, TheCountdownGoesFromEventToEvent) {
    ASSERT_EQ(companion({"setup", calendars(), "--email", "me@example.org"}).exitCode, 0);
    variables["TZ"] = "America/New_York";
    const auto timeline = json(widgets({"timeline", "countdown", "--json", "--now", "2026-03-28T23:30:00Z"}));
    ASSERT_TRUE(timeline.find("entries"));
    std::vector<std::string> found;
    for (const auto& entry : *timeline.find("entries")->asArray()) {
        found.push_back(*entry.find("date")->asString() + " " +
                        *entry.find("event")->find("title")->asString());
    }
    EXPECT_EQ(found,
              (std::vector<std::string>{"2026-03-28T23:30:00.000Z Gap", "2026-03-29T01:30:00.000Z Talk",
                                        "2026-03-29T08:00:00.000Z Review"}));
    EXPECT_EQ(*timeline.find("policy")->find("after")->asString(), "2026-03-29T09:31:00.000Z");
}

TEST_F(TimelineAcrossZones, OnlyWhatIsAttendedIsUnderWay) {
    ASSERT_EQ(companion({"setup", calendars(), "--email", "me@example.org"}).exitCode, 0);
    const auto titlesAt = [&](const std::string& now) {
        const auto timeline = json(widgets({"timeline", "current", "--json", "--now", now}));
        std::vector<std::string> titles;
        for (const auto& event : *timeline.find("entries")->asArray()->front().find("events")->asArray()) {
            titles.push_back(*event.find("title")->asString());
        }
        return titles;
    };
    EXPECT_EQ(titlesAt("2026-03-28T08:00:00Z"), std::vector<std::string>{"Night shift"});
    // A cancelled one and one that was declined.
    EXPECT_EQ(titlesAt("2026-03-28T10:45:00Z"), std::vector<std::string>{});
    EXPECT_EQ(titlesAt("2026-03-28T11:15:00Z"), std::vector<std::string>{"Maybe"});
}

}  // namespace
