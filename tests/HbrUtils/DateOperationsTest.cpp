#include <HbrUtils/DateOperations.h>
#include <HbrUtils/Unused/DateShorthands.h>

#include <gtest/gtest.h>

#include <cstdio>

#include "support/TestEnvironment.h"

namespace hbr {
namespace {

using platform::Calendar;
using platform::Date;
using platform::LocalTime;

Calendar calendarIn(const char* zone) {
    return Calendar(platform::TimeZone::named(zone).value());
}

Date in(const Calendar& calendar, const LocalTime& local) {
    return calendar.timeZone().date(local);
}

/// "2026-03-04 09:41:30"
LocalTime local(const char* text) {
    LocalTime time{};
    std::sscanf(text, "%d-%d-%d %d:%d:%d", &time.year, &time.month, &time.day, &time.hour, &time.minute,
                &time.second);
    return time;
}

TEST(DateOperations, StepToTheBoundsOfTheDayAndTheClock) {
    const char* const cases[][4] = {
        {"Europe/Berlin", "2026-03-04 09:41:30", "2026-03-04 00:00:00", "2026-03-04 10:00:00"},
        {"Europe/Berlin", "2026-12-31 23:00:00", "2026-12-31 00:00:00", "2027-01-01 00:00:00"},
        {"Europe/Berlin", "2026-03-29 01:59:00", "2026-03-29 00:00:00", "2026-03-29 03:00:00"},
        {"America/Sao_Paulo", "2017-10-15 01:30:00", "2017-10-15 01:00:00", "2017-10-15 02:00:00"},
        {"America/Sao_Paulo", "2017-10-14 23:30:00", "2017-10-14 00:00:00", "2017-10-15 01:00:00"},
        {"America/Santiago", "2026-09-05 23:30:00", "2026-09-05 00:00:00", "2026-09-06 01:00:00"},
        {"Asia/Beirut", "2026-03-29 01:10:00", "2026-03-29 01:00:00", "2026-03-29 02:00:00"},
        // Half an hour is left out at two.
        {"Australia/Lord_Howe", "2026-10-04 01:45:00", "2026-10-04 00:00:00", "2026-10-04 02:30:00"},
        // The next day does not exist.
        {"Pacific/Apia", "2011-12-29 23:00:00", "2011-12-29 00:00:00", "2011-12-31 00:00:00"}};
    for (const auto& [zoneName, dateText, begin, nextHour] : cases) {
        const Calendar calendar = calendarIn(zoneName);
        const auto& zone = calendar.timeZone();
        const LocalTime written = local(dateText);
        const Date date = in(calendar, written).addingTimeInterval(0.5);
        const LocalTime end{written.year, written.month, written.day, 23, 59, 59};
        EXPECT_EQ(beginningOfDay(date, calendar), in(calendar, local(begin))) << zoneName;
        EXPECT_EQ(zone.localTime(endOfDay(date, calendar)), end) << zoneName;
        EXPECT_EQ(zone.localTime(nextFullHour(date, calendar)), local(nextHour)) << zoneName;
        EXPECT_EQ(date.timeIntervalSince(removingSeconds(date, calendar)), written.second + 0.5) << zoneName;
    }
    // In the second of two equal hours.
    EXPECT_EQ(removingSeconds(test::at("2026-10-25T02:30:20+01:00"), calendarIn("Europe/Berlin")),
              test::at("2026-10-25T02:30:00+01:00"));
}

TEST(DateOperations, ADayWhoseLastHourComesTwiceEndsWithTheFirstOfThem) {
    const char* const cases[][4] = {
        {"America/Santiago", "2026-04-04T12:00:00-03:00", "2026-04-04T00:00:00-03:00",
         "2026-04-04T23:59:59-03:00"},
        {"Asia/Beirut", "2026-10-24T12:00:00+03:00", "2026-10-24T00:00:00+03:00",
         "2026-10-24T23:59:59+03:00"},
        // From 00:01 back to 23:01, and from 23:00 on to midnight.
        {"America/St_Johns", "2010-11-06T12:00:00-02:30", "2010-11-06T00:00:00-02:30",
         "2010-11-06T23:59:59-02:30"},
        {"Asia/Dhaka", "2009-06-19T12:00:00+06:00", "2009-06-19T00:00:00+06:00", "2009-06-19T22:59:59+06:00"},
        {"America/Havana", "2026-11-01T12:00:00-05:00", "2026-11-01T00:00:00-04:00",
         "2026-11-01T23:59:59-05:00"}};
    for (const auto& [zoneName, noon, begin, end] : cases) {
        const Calendar calendar = calendarIn(zoneName);
        EXPECT_EQ(beginningOfDay(test::at(noon), calendar), test::at(begin)) << zoneName;
        EXPECT_EQ(endOfDay(test::at(noon), calendar), test::at(end)) << zoneName;
        EXPECT_EQ(endOfDay(test::at(end), calendar), test::at(end)) << zoneName;
    }
}

TEST(DateOperations, TomorrowAndTodayGoByTheDatesOfTheZone) {
    const Calendar calendar = calendarIn("America/New_York");
    const Date now = in(calendar, {2026, 3, 7, 23, 30, 0});
    EXPECT_TRUE(isTomorrow(in(calendar, {2026, 3, 8, 0, 0, 0}), now, calendar));
    EXPECT_TRUE(isTomorrow(in(calendar, {2026, 3, 8, 23, 59, 59}), now, calendar));
    EXPECT_FALSE(isTomorrow(in(calendar, {2026, 3, 9, 0, 0, 0}), now, calendar));
    EXPECT_FALSE(isTomorrow(now, now, calendar));
    EXPECT_TRUE(isToday(in(calendar, {2026, 3, 7, 0, 0, 0}), calendar, now));
    EXPECT_FALSE(isToday(now.addingTimeInterval(1800), calendar, now));
    EXPECT_FALSE(isInFuture(now, now) || isInPast(now, now));
}

TEST(DateOperations, MakeDatesFromTheirParts) {
    const Calendar calendar = calendarIn("Asia/Kolkata");
    const Date now = test::at("2026-03-04T20:00:00Z");  // 5 March there
    EXPECT_EQ(make(29, 2, 2028, 23, 5, calendar), test::at("2028-02-29T23:05:00+05:30"));
    EXPECT_EQ(makeToday(0, 1, calendar, now), test::at("2026-03-05T00:01:00+05:30"));
    EXPECT_EQ(calendar.date(dateComponents(5, 3, 2026, 7, 30)), test::at("2026-03-05T07:30:00+05:30"));
}

TEST(DateOperations, ChristmasEndsWithTheFirstInstantOfThe26th) {
    const Calendar calendar = calendarIn("Europe/Berlin");
    EXPECT_FALSE(isInChristmasPeriod(in(calendar, {2026, 12, 23, 23, 59, 59}), calendar));
    EXPECT_TRUE(isInChristmasPeriod(in(calendar, {2026, 12, 24, 0, 0, 0}), calendar));
    EXPECT_TRUE(isInChristmasPeriod(in(calendar, {2026, 12, 26, 0, 0, 0}), calendar));
    EXPECT_FALSE(isInChristmasPeriod(in(calendar, {2026, 12, 26, 0, 0, 1}), calendar));
}

}  // namespace
}  // namespace hbr
