#include <HbrUtils/Formatters.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "TextEnvironment.h"

namespace hbr {
namespace {

using ::test::at;
using test::shown;

TEST(Formatters, KeepTheirStyles) {
    const test::TextEnvironment world("2026-03-04T08:41:00Z");
    const Formatters& f = world.formatters;
    const platform::Date now = world->now();
    const platform::Date date = at("2026-03-05T21:05:07.9+01:00");
    EXPECT_EQ(shown(f.timeOnly().string(date)), "9:05_PM");
    EXPECT_EQ(shown(f.timeAndDateFormatter().string(date, now)), "tomorrow, 9:05_PM");
    EXPECT_EQ(f.dateOnly().string(date), "March 5, 2026");
    EXPECT_EQ(f.dateOnlyNoYearWeekDay().string(date), "Thu, Mar 5");
    EXPECT_EQ(f.calendarEventOccurrence().string(date), "20260305T200507Z");
    EXPECT_EQ(f.weekDay().string(date), "Thursday");
    EXPECT_EQ(f.countdownFormatter().string(now, now.addingTimeInterval(93784)), "1d 2h");
    EXPECT_EQ(f.durationFormatter().string(93784), "1d 2h 3m");
    EXPECT_EQ(f.durationFormatterForAccessibility().string(93784), "1 day, 2 hours, 3 minutes");
    EXPECT_EQ(f.durationFormatterForTimeOffset().string(93784), "26 hours, 3 minutes, 4 seconds");
    EXPECT_EQ(f.timeRemaining(93784), "1d remaining");
    EXPECT_EQ(f.timeRemaining(59.9), "59s remaining");
    EXPECT_EQ(f.timeRemaining(0), "0s remaining");
}

TEST(Formatters, OccurrencesAreWrittenAlikeInEveryLocale) {
    for (const char* locale : {"th_TH", "fa_IR", "ar_EG"}) {
        const test::TextEnvironment world("2026-03-04T08:41:00Z", locale);
        EXPECT_EQ(world.formatters.calendarEventOccurrence().string(world->now()), "20260304T084100Z")
            << locale;
    }
}

TEST(Formatters, AreMadeAndUsedByManyThreadsAtOnce) {
    const test::TextEnvironment world("2026-03-04T08:41:00Z", "de_DE");
    std::vector<std::thread> threads;
    std::vector<std::string> texts(6);
    for (std::string& text : texts) {
        threads.emplace_back([&world, &text] {
            const Formatters& f = world.formatters;
            const platform::Date now = world->now();
            for (int i = 0; i < 50; ++i) {
                text = f.timeOnly().string(now) + "|" + f.timeAndDateFormatter().string(now, now) + "|" +
                       f.durationFormatter().string(3720).value() + "|" +
                       f.relativeDefault().string(now, now);
            }
        });
    }
    for (auto& thread : threads)
        thread.join();
    EXPECT_THAT(texts, testing::Each("09:41|heute, 09:41|1 Std., 2 Min.|in 0 Sekunden"));
}

}  // namespace
}  // namespace hbr
