#include <TimeAndText/Calendar.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

Calendar calendarIn(const char* zone) {
    return Calendar(TimeZone::named(zone).value());
}

Date at(const Calendar& calendar, const LocalTime& local) {
    return calendar.timeZone().date(local);
}

TEST(Calendar, AddingDaysKeepsTheWallClock) {
    const std::tuple<const char*, LocalTime, int, LocalTime> cases[] = {
        {"America/New_York", {2026, 3, 7, 12, 0, 0}, 1, {2026, 3, 8, 12, 0, 0}},
        {"America/New_York", {2026, 3, 7, 2, 30, 0}, 1, {2026, 3, 8, 3, 30, 0}},
        {"America/New_York", {2026, 11, 2, 1, 30, 0}, -1, {2026, 11, 1, 1, 30, 0}},
        {"America/Santiago", {2026, 9, 5, 0, 0, 0}, 1, {2026, 9, 6, 1, 0, 0}},
        {"Asia/Beirut", {2026, 3, 30, 0, 0, 0}, -1, {2026, 3, 29, 1, 0, 0}},
        {"Europe/Berlin", {2026, 12, 31, 23, 0, 0}, 60, {2027, 3, 1, 23, 0, 0}},
        {"Pacific/Apia", {2011, 12, 29, 9, 0, 0}, 2, {2011, 12, 31, 9, 0, 0}},
    };
    for (const auto& [zoneName, from, days, to] : cases) {
        const Calendar calendar = calendarIn(zoneName);
        const Date moved = calendar.addingDays(at(calendar, from).addingTimeInterval(0.25), days);
        EXPECT_EQ(calendar.timeZone().localTime(moved), to) << zoneName;
        EXPECT_EQ(moved.timeIntervalSinceReferenceDate() - at(calendar, to).timeIntervalSinceReferenceDate(),
                  0.25);
    }
}

TEST(Calendar, NoDaysLeaveTheSecondOfTwoEqualReadings) {
    const Calendar calendar = calendarIn("Europe/Berlin");
    const Date second = calendar.timeZone().date({2026, 10, 25, 2, 30, 0}).addingTimeInterval(3600);
    EXPECT_EQ(calendar.addingDays(second, 0), second);
}

TEST(Calendar, AddingMinutesIsElapsedTime) {
    const Calendar calendar = calendarIn("Europe/Berlin");
    const Date moved = calendar.addingMinutes(at(calendar, {2026, 3, 29, 1, 30, 0}), 60);
    EXPECT_EQ(calendar.timeZone().localTime(moved), (LocalTime{2026, 3, 29, 3, 30, 0}));
}

TEST(Calendar, ADayWithoutMidnightBeginsWithItsFirstInstant) {
    const std::tuple<const char*, LocalTime, LocalTime> cases[] = {
        {"America/Sao_Paulo", {2017, 10, 15, 15, 0, 0}, {2017, 10, 15, 1, 0, 0}},
        {"Asia/Beirut", {2022, 3, 27, 12, 0, 0}, {2022, 3, 27, 1, 0, 0}},
        // The clock went from 23:30 to 00:30.
        {"America/Toronto", {1919, 3, 31, 12, 0, 0}, {1919, 3, 31, 0, 30, 0}},
        {"Africa/Cairo", {2026, 4, 24, 12, 0, 0}, {2026, 4, 24, 1, 0, 0}},
        {"America/Havana", {2026, 11, 1, 12, 0, 0}, {2026, 11, 1, 0, 0, 0}},
        {"America/Sao_Paulo", {2018, 2, 18, 12, 0, 0}, {2018, 2, 18, 0, 0, 0}},
        {"Europe/Berlin", {2026, 3, 29, 12, 0, 0}, {2026, 3, 29, 0, 0, 0}},
    };
    for (const auto& [zoneName, moment, expected] : cases) {
        const Calendar calendar = calendarIn(zoneName);
        const Date start = calendar.startOfDay(at(calendar, moment));
        EXPECT_EQ(calendar.timeZone().localTime(start), expected) << zoneName;
        EXPECT_FALSE(calendar.isSameDay(start, start.addingTimeInterval(-1))) << zoneName;
        EXPECT_TRUE(calendar.isSameDay(start, at(calendar, moment))) << zoneName;
    }
}

TEST(Calendar, CountsDaysByTheDates) {
    const Calendar calendar = calendarIn("Europe/Berlin");
    const auto days = [&calendar](const LocalTime& from, const LocalTime& to) {
        return calendar.daysBetween(at(calendar, from), at(calendar, to));
    };
    EXPECT_EQ(days({2026, 3, 28, 23, 59, 0}, {2026, 3, 29, 0, 1, 0}), 1);
    EXPECT_EQ(days({2026, 3, 29, 0, 0, 0}, {2026, 3, 29, 23, 59, 59}), 0);
    EXPECT_EQ(days({2027, 1, 1, 0, 0, 0}, {2026, 1, 1, 0, 0, 0}), -365);
    EXPECT_EQ(calendar.weekday(at(calendar, {2026, 3, 29, 0, 0, 0})), 1);
    EXPECT_EQ(calendar.weekday(at(calendar, {1900, 12, 29, 0, 0, 0})), 7);
}

TEST(Calendar, ComponentsOutOfRangeCarryOver) {
    const Calendar calendar = calendarIn("Europe/Berlin");
    const auto local = [&calendar](const DateComponents& components) {
        return calendar.timeZone().localTime(calendar.date(components).value());
    };
    EXPECT_EQ(local({.year = 2026, .month = 14, .day = 1, .hour = 24}), (LocalTime{2027, 2, 2, 0, 0, 0}));
    EXPECT_EQ(local({.year = 2026, .month = 1, .day = 0, .minute = -1}),
              (LocalTime{2025, 12, 30, 23, 59, 0}));
    EXPECT_EQ(local({.year = 2026, .hour = 12, .timeZone = TimeZone::utc()}),
              (LocalTime{2026, 1, 1, 13, 0, 0}));
    EXPECT_FALSE(calendar.date({.month = 3, .day = 1}));
}

}  // namespace
}  // namespace platform
