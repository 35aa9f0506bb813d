#include <HbrUtils/Formatters.h>
#include <HbrUtils/RelativeTimeTexts.h>
#include <HbrUtils/TimeConstants.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include <support/TextEnvironment.h>

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

TEST(Formatters, ReadAsTheLocaleWrites) {
    struct Case {
        const char* locale;
        const char* time;
        const char* tomorrow;
        const char* inNineDays;
        const char* date;
        const char* dayAndMonth;
        const char* weekDay;
        const char* countdown;
        const char* duration;
        const char* spoken;
        const char* offset;
        const char* relative;
    };
    const Case cases[] = {
        {"en_US", "9:05_PM", "tomorrow, 9:05_PM", "Mar 13, 2026, 9:41_AM", "March 5, 2026", "Thu, Mar 5",
         "Thursday", "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds",
         "2 hours ago"},
        {"en_GB", "21:05", "tomorrow, 21:05", "13 Mar 2026, 09:41", "5 March 2026", "Thu, 5 Mar", "Thursday",
         "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds", "2 hours ago"},
        {"de_DE", "21:05", "morgen, 21:05", "13.03.2026, 09:41", "5. März 2026", "Do., 5. März", "Donnerstag",
         "1 T, 2 Std.", "1 T, 2 Std. und 3 Min.", "1 Tag, 2 Stunden und 3 Minuten",
         "26 Stunden, 3 Minuten und 4 Sekunden", "vor 2 Stunden"},
        {"fr_FR", "21:05", "demain, 21:05", "13 mars 2026, 09:41", "5 mars 2026", "jeu. 5 mars", "jeudi",
         "1j 2h", "1j 2h 3min", "1\u00A0jour, 2\u00A0heures et 3 minutes",
         "26\u00A0heures, 3 minutes et 4\u00A0secondes", "il y a 2 heures"},
        {"es_ES", "21:05", "mañana, 21:05", "13 mar 2026, 9:41", "5 de marzo de 2026", "jue, 5 mar", "jueves",
         "1d 2h", "1d 2h 3min", "1 día, 2 horas y 3 minutos", "26 horas, 3 minutos y 4 segundos",
         "hace 2 horas"},
        {"pt_BR", "21:05", "amanhã, 21:05", "13 de mar. de 2026, 09:41", "5 de março de 2026",
         "qui., 5 de mar.", "quinta-feira", "1 dia 2 h", "1 dia 2 h 3 min", "1 dia, 2 horas e 3 minutos",
         "26 horas, 3 minutos e 4 segundos", "há 2 horas"},
        {"ja_JP", "21:05", "明日 21:05", "2026/03/13 9:41", "2026年3月5日", "3月5日(木)", "木曜日", "1d2h",
         "1d2h3m", "1 日 2 時間 3 分", "26 時間 3 分 4 秒", "2 時間前"},
        {"ar_EG", "٩:٠٥ م", "غدًا، ٩:٠٥ م", "١٣\u200F/٠٣\u200F/٢٠٢٦، ٩:٤١ ص", "٥ مارس ٢٠٢٦", "الخميس، ٥ مارس",
         "الخميس", "١ ي و٢ س", "١ ي و٢ س و٣ د", "يوم، وساعتان، و٣ دقائق", "٢٦ ساعة، و٣ دقائق، و٤ ثوان",
         "قبل ساعتين"},
        {"he_IL", "21:05", "מחר, 21:05", "13 במרץ 2026, 9:41", "5 במרץ 2026", "יום ה׳, 5 במרץ", "יום חמישי",
         "י׳ 2 שע׳", "י׳ 2 שע׳ 3 דק׳", "יום 1, שעתיים ו-3 דקות", "26 שעות, 3 דקות ו-4 שניות", "לפני שעתיים"},
    };
    for (const Case& c : cases) {
        const test::TextEnvironment world("2026-03-04T08:41:00Z", c.locale);
        const Formatters& f = world.formatters;
        const platform::Date now = world->now();
        const platform::Date date = at("2026-03-05T21:05:07.9+01:00");
        EXPECT_EQ(shown(f.timeOnly().string(date)), c.time);
        EXPECT_EQ(shown(f.timeAndDateFormatter().string(date, now)), c.tomorrow);
        EXPECT_EQ(shown(f.timeAndDateFormatter().string(now.addingTimeInterval(days(9)), now)), c.inNineDays);
        EXPECT_EQ(f.dateOnly().string(date), c.date);
        EXPECT_EQ(f.dateOnlyNoYearWeekDay().string(date), c.dayAndMonth);
        EXPECT_EQ(f.weekDay().string(date), c.weekDay);
        EXPECT_EQ(f.countdownFormatter().string(now, now.addingTimeInterval(93784)), c.countdown);
        EXPECT_EQ(f.durationFormatter().string(93784), c.duration);
        EXPECT_EQ(f.durationFormatterForAccessibility().string(93784), c.spoken);
        EXPECT_EQ(f.durationFormatterForTimeOffset().string(93784), c.offset);
        EXPECT_EQ(formattedRelativeTime(now.addingTimeInterval(-7300), now, f), c.relative);
    }
}

/// What every formatter and every relative text says of a date.
std::string everyText(platform::Date date, platform::Date now, const Formatters& f) {
    const double seconds = date.timeIntervalSince(now);
    std::string text;
    for (const std::string& each :
         {f.timeOnly().string(date), f.timeAndDateFormatter().string(date, now), f.dateOnly().string(date),
          f.dateOnlyNoYearWeekDay().string(date), f.calendarEventOccurrence().string(date),
          f.weekDay().string(date), f.countdownFormatter().string(now, date).value(),
          f.durationFormatter().string(seconds).value(),
          f.durationFormatterForAccessibility().string(seconds).value(),
          f.durationFormatterForTimeOffset().string(seconds).value(), f.timeRemaining(seconds).value(),
          formattedRelativeTime(date, now, f), formattedShortRelativeTime(date, now, false, false, f),
          formattedShortRelativeTime(date, now, true, true, f),
          formattedCompactRelativeTime(date, now, false, f),
          formattedWithOnAndAt(date, f.weekDay(), f.timeOnly(), f, now),
          formattedMinutes(static_cast<int>(asMinutes(seconds)), f), localizedSnoozeTime(15)}) {
        (text += each) += '|';
    }
    return text;
}

TEST(Formatters, AreMadeAndUsedByManyThreadsAtOnce) {
    constexpr int steps = 24;
    for (const char* locale : {"de_DE", "ar_EG", "en_US"}) {
        const test::TextEnvironment world("2026-10-24T08:41:00Z", locale);
        const platform::Date now = world->now();
        const auto dateOf = [now](int step) { return now.addingTimeInterval(step * 7321.0); };
        std::vector<std::string> expected;
        const Formatters alone(world);
        for (int step = 0; step < steps; ++step)
            expected.push_back(everyText(dateOf(step), now, alone));

        std::vector<std::thread> threads;
        std::vector<std::vector<std::string>> texts(4);
        for (auto& own : texts) {
            threads.emplace_back([&own, &world, &dateOf, now] {
                for (int step = 0; step < steps; ++step)
                    own.push_back(everyText(dateOf(step), now, world.formatters));
            });
        }
        for (auto& thread : threads)
            thread.join();
        EXPECT_THAT(texts, testing::Each(expected)) << locale;
    }
}

}  // namespace
}  // namespace hbr
