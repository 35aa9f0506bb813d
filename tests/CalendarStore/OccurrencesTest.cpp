#include "CalendarFixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using test::CalendarFixture;
using test::event;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Lines = std::vector<std::string>;

/// Ends, zones, added and excluded dates, cancellations: tests/journeys/edge-cases.
TEST(Occurrences, AnIntervalTouchesWhatStartsOrEndsAtItsBounds) {
    CalendarFixture fixture;
    fixture.write("a.ics", test::calendar(event("DTSTART:20260304T090000Z\nDTEND:20260304T100000Z")));
    EXPECT_EQ(fixture.list("2026-03-04T10:00:00Z", "2026-03-04T11:00:00Z").size(), 1u);
    EXPECT_EQ(fixture.list("2026-03-04T08:00:00Z", "2026-03-04T09:00:00Z").size(), 1u);
    EXPECT_EQ(fixture.list("2026-03-04T09:30:00Z", "2026-03-04T09:30:00Z").size(), 1u);
    EXPECT_THAT(fixture.list("2026-03-04T10:00:01Z", "2026-03-04T11:00:00Z"), IsEmpty());
    EXPECT_THAT(fixture.list("2026-03-04T08:00:00Z", "2026-03-04T08:59:59Z"), IsEmpty());
}

TEST(Occurrences, TimesInAGapOrTwice) {
    CalendarFixture fixture;
    EXPECT_THAT(fixture.list(event("DTSTART;TZID=Europe/Berlin:20260328T023000\nRRULE:FREQ=DAILY;COUNT=3"),
                             "2026-03-01T00:00:00Z", "2026-04-01T00:00:00Z"),
                ElementsAre("2026-03-28 01:30Z 0m T", "2026-03-29 01:30Z 0m T", "2026-03-30 00:30Z 0m T"));
    EXPECT_THAT(fixture.list(event("DTSTART;TZID=America/New_York:20261101T013000"), "2026-10-31T00:00:00Z",
                             "2026-11-02T00:00:00Z"),
                ElementsAre("2026-11-01 05:30Z 0m T"));
}

TEST(Occurrences, StartCountAndUntil) {
    const std::pair<const char*, Lines> cases[] = {
        // COUNT counts what the rule yields; another start is shown in addition.
        {"DTSTART:20260303T090000Z\nRRULE:FREQ=WEEKLY;BYDAY=WE;COUNT=2",
         {"2026-03-03 09:00Z 0m T", "2026-03-04 09:00Z 0m T", "2026-03-11 09:00Z 0m T"}},
        {"DTSTART:20260304T090000Z\nRRULE:FREQ=WEEKLY;BYDAY=WE;COUNT=2",
         {"2026-03-04 09:00Z 0m T", "2026-03-11 09:00Z 0m T"}},
        {"DTSTART;VALUE=DATE:20260303\nRRULE:FREQ=WEEKLY;BYDAY=WE;COUNT=1",
         {"2026-03-03 1d T", "2026-03-04 1d T"}},
        {"DTSTART:20250406T000000Z\nRRULE:FREQ=MONTHLY;COUNT=12;BYDAY=1SA", {"2026-03-07 00:00Z 0m T"}},
        {"DTSTART:20250406T000000Z\nRRULE:FREQ=MONTHLY;COUNT=10;BYDAY=1SA", {}},
        {"DTSTART:20260303T090000Z\nRRULE:FREQ=WEEKLY;INTERVAL=1000000;COUNT=2147483647",
         {"2026-03-03 09:00Z 0m T"}},
        {"DTSTART;VALUE=DATE:20260303\nRRULE:FREQ=DAILY;UNTIL=20260304T235959Z",
         {"2026-03-03 1d T", "2026-03-04 1d T"}},
        {"DTSTART:20260303T090000Z\nRRULE:FREQ=DAILY;COUNT=3\nRRULE:FREQ=WEEKLY;COUNT=2",
         {"2026-03-03 09:00Z 0m T", "2026-03-04 09:00Z 0m T", "2026-03-05 09:00Z 0m T",
          "2026-03-10 09:00Z 0m T"}},
        {"DTSTART:20260303T090000Z\nRRULE:FREQ=NEVER", {"2026-03-03 09:00Z 0m T"}}};
    CalendarFixture fixture;
    for (const auto& [lines, expected] : cases) {
        EXPECT_EQ(fixture.list(event(lines), "2026-03-01T00:00:00Z", "2026-03-31T00:00:00Z"), expected)
            << lines;
    }
}

const char* dailyAtTen =
    "DTSTART;TZID=Europe/Berlin:20260303T100000\nDURATION:PT1H\nRRULE:FREQ=DAILY;COUNT=3";

TEST(Occurrences, ChangedByThemselves) {
    const std::pair<const char*, Lines> cases[] = {
        {"RECURRENCE-ID;TZID=Europe/Berlin:20260304T100000\nDTSTART;TZID=Europe/"
         "Berlin:20260310T100000\nSUMMARY:M",
         {"2026-03-03 09:00Z 60m T", "2026-03-05 09:00Z 60m T", "2026-03-10 09:00Z 0m M*"}},
        {"RECURRENCE-ID;TZID=America/New_York:20260304T040000\nDTSTART:20260304T120000Z\nSUMMARY:M",
         {"2026-03-03 09:00Z 60m T", "2026-03-04 12:00Z 0m M*", "2026-03-05 09:00Z 60m T"}},
        {"RECURRENCE-ID;VALUE=DATE:20260304\nDTSTART:20260304T120000Z\nSUMMARY:M",
         {"2026-03-03 09:00Z 60m T", "2026-03-04 12:00Z 0m M*", "2026-03-05 09:00Z 60m T"}},
        {"RECURRENCE-ID:20260304T090000Z\nDTSTART:20260304T090000Z\nSUMMARY:M\nSTATUS:CANCELLED",
         {"2026-03-03 09:00Z 60m T", "2026-03-04 09:00Z 0m M*!", "2026-03-05 09:00Z 60m T"}},
        {"RECURRENCE-ID;RANGE=THISANDFUTURE:20260304T090000Z\nDTSTART:20260304T120000Z\nDURATION:"
         "PT30M\nSUMMARY:M",
         {"2026-03-03 09:00Z 60m T", "2026-03-04 12:00Z 30m M*", "2026-03-05 12:00Z 30m M"}}};
    CalendarFixture fixture;
    for (const auto& [override, expected] : cases) {
        for (const bool first : {false, true}) {
            const auto items =
                first ? event(override) + event(dailyAtTen) : event(dailyAtTen) + event(override);
            EXPECT_EQ(fixture.list(items, "2026-03-01T00:00:00Z", "2026-03-31T00:00:00Z"), expected)
                << override;
        }
    }
}

TEST(Occurrences, KnowTheirPlaceInTheSeries) {
    CalendarFixture fixture;
    fixture.list(event(dailyAtTen) + event("RECURRENCE-ID:20260304T090000Z\nDTSTART:20260304T120000Z") +
                     event("UID:single\nDTSTART:20260304T200000Z"),
                 "2026-03-04T00:00:00Z", "2026-03-04T23:00:00Z");
    const auto found = fixture.events("2026-03-04T00:00:00Z", "2026-03-04T23:00:00Z");
    ASSERT_EQ(found.size(), 2u);
    EXPECT_EQ(found[0]->occurrenceDate, test::at("2026-03-04T12:00:00Z"));
    EXPECT_EQ(found[0]->originalStart, test::at("2026-03-04T09:00:00Z"));
    EXPECT_TRUE(found[0]->hasRecurrenceRules);
    EXPECT_EQ(found[0]->eventIdentifier,
              fixture.events("2026-03-03T09:00:00Z", "2026-03-03T09:00:00Z")[0]->eventIdentifier);
    EXPECT_FALSE(found[1]->occurrenceDate || found[1]->originalStart || found[1]->hasRecurrenceRules);
    EXPECT_EQ(fixture.store().eventWithIdentifier(found[0]->eventIdentifier)->startDate,
              test::at("2026-03-03T09:00:00Z"));
}

TEST(Occurrences, HostileRulesCostLittleAndAreReported) {
    CalendarFixture fixture;
    const auto items =
        event("UID:a\nSUMMARY:every second\nDTSTART:20010101T000000Z\nRRULE:FREQ=SECONDLY") +
        event("UID:b\nDTSTART:20010101T000000Z\nRRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30") +
        event("UID:c\nSUMMARY:counted\nDTSTART:20010101T000000Z\nRRULE:FREQ=SECONDLY;COUNT=1000000000") +
        event("UID:d\nSUMMARY:meeting\nDTSTART:20260304T090000Z");
    const auto lines = fixture.list(items, "2026-03-04T09:00:00Z", "2026-03-04T09:00:00Z");
    EXPECT_THAT(
        lines, testing::UnorderedElementsAre("2026-03-04 09:00Z 0m every second",
                                             "2026-03-04 09:00Z 0m counted", "2026-03-04 09:00Z 0m meeting"));
    EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr("yields no further occurrence")));
    EXPECT_THAT(fixture.diagnostics(), testing::Not(Contains(HasSubstr("too many occurrences"))));
    EXPECT_THAT(fixture.list("2026-03-04T08:00:00Z", "2026-06-04T09:00:00Z"),
                Contains("2026-03-04 09:00Z 0m meeting"));
    EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr("too many occurrences")));
}

TEST(Occurrences, ManyHostileSeriesShareOneBudgetAndLeaveTheOthersComplete) {
    CalendarFixture fixture;
    std::string items;
    for (int i = 0; i < 300; ++i) {
        const auto number = std::to_string(i);
        items += event("UID:s" + number + "\nSUMMARY:bad\nDTSTART:20260304T000000Z\nRRULE:FREQ=SECONDLY" +
                       (i % 2 == 0 ? "" : ";COUNT=2000000000;BYSECOND=1"));
        items += event("UID:d" + number +
                       "\nSUMMARY:daily\nDTSTART;TZID=Nowhere:20260101T090000\n"
                       "RRULE:FREQ=DAILY;BYHOUR=9;COUNT=5000");
    }
    const auto lines = fixture.list(items, "2026-03-04T00:00:00Z", "2026-04-03T00:00:00Z");
    EXPECT_EQ(std::ranges::count_if(lines, [](const auto& line) { return line.ends_with("daily"); }),
              300 * 30);
    const auto reports = fixture.diagnostics();
    EXPECT_EQ(std::ranges::count_if(
                  reports, [](const auto& text) { return text.find("too many occ") != std::string::npos; }),
              300);
    EXPECT_EQ(std::ranges::count_if(
                  reports, [](const auto& text) { return text.find("Nowhere") != std::string::npos; }),
              100);
    // A few series come out of the reserve, then 200 with 50 each, then one of each.
    const auto bad = std::ranges::count_if(lines, [](const auto& line) { return line.ends_with("bad"); });
    EXPECT_LT(bad, 40'000);
    EXPECT_GT(bad, 200 * 50 + 90);
}

}  // namespace
