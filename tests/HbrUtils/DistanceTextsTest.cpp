#include <HbrUtils/DistanceTexts.h>

#include <gtest/gtest.h>

#include <support/TextEnvironment.h>

namespace hbr {
namespace {

using platform::ChangeMoments;
using platform::ClockReading;
using platform::Date;
using test::shown;

TEST(DistanceTexts, NameTheSameWholeMinutesAtTheSameSecond) {
    const test::TextEnvironment world("2026-03-04T09:41:00Z");
    const Formatters& f = world.formatters;
    const Date now = world->now();
    struct Case {
        double seconds;
        const char* countdown;
        const char* remaining;
        const char* relative;
        const char* inShort;
        const char* compact;
    };
    for (const Case& c : {Case{5394, "1h 29m", "1h remaining", "in 1 hour", "in 1_h 29_m", "1h29"},
                          {540, "9m", "9m remaining", "in 9 minutes", "in 9_m", "9m"},
                          {539.9999, "8m", "8m remaining", "in 8 minutes", "in 8_m", "8m"},
                          {479.6, "7m", "7m remaining", "in 7 minutes", "in 7_m", "7m"},
                          {59.7, "0m", "59s remaining", "in 59 seconds", "in 1_m", "1m"}}) {
        const Date date = now.addingTimeInterval(c.seconds);
        EXPECT_EQ(countdownText(date, now, f), c.countdown);
        EXPECT_EQ(timeRemainingText(date, now, f), c.remaining);
        EXPECT_EQ(relativeText(date, now, f), c.relative);
        EXPECT_EQ(shown(shortRelativeText(date, false, now, f)), c.inShort);
        EXPECT_EQ(shown(compactRelativeText(date, false, now, f)), c.compact);
    }
}

TEST(DistanceTexts, NoteWhenTheyChange) {
    // A day before the clock changes, so that a day is not always 24 hours.
    const test::TextEnvironment world("2026-03-28T09:41:00Z");
    const Formatters& f = world.formatters;
    const std::vector<std::function<std::string(Date, const ClockReading&)>> texts = {
        [&](Date date, const ClockReading& clock) { return countdownText(date, clock, f).value_or(""); },
        [&](Date date, const ClockReading& clock) {
            return spokenCountdownText(date, clock, f).value_or("");
        },
        [&](Date date, const ClockReading& clock) { return timeRemainingText(date, clock, f).value_or(""); },
        [&](Date date, const ClockReading& clock) { return relativeText(date, clock, f); },
        [&](Date date, const ClockReading& clock) { return shortRelativeText(date, false, clock, f); },
        [&](Date date, const ClockReading& clock) { return shortRelativeText(date, true, clock, f); },
        [&](Date date, const ClockReading& clock) { return compactRelativeText(date, false, clock, f); }};
    const Date begin = world->now();
    for (std::size_t text = 0; text < texts.size(); ++text) {
        // Distances at which units, words and the day change.
        for (const double distance :
             {172800.0, 90000.5, 86400.0, 82800.0, 51600.0, 14400.0, 3600.0, 60.0, -1.0, -3600.0, -86400.0}) {
            const Date date = begin.addingTimeInterval(distance + 60);
            std::string known;
            std::optional<Date> change = begin;
            for (double second = 0.01; second < 125; second += 0.33) {
                const Date now = begin.addingTimeInterval(second);
                if (change && *change <= now) {
                    ChangeMoments changes;
                    known = texts[text](date, ClockReading(now, &changes));
                    change = changes.earliest();
                }
                ASSERT_EQ(known, texts[text](date, now)) << text << " " << distance << " " << second;
            }
        }
    }
}

}  // namespace
}  // namespace hbr
