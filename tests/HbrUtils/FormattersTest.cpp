#include <HbrUtils/Formatters.h>
#include <HbrUtils/RelativeTimeTexts.h>
#include <HbrUtils/TimeConstants.h>

#include <gtest/gtest.h>
#include <support/Threads.h>

#include <support/TextEnvironment.h>

namespace hbr {
namespace {

using ::test::at;
using test::shown;

TEST(Formatters, OccurrencesAreWrittenAlikeInEveryLocale) {
    for (const char* locale : {"th_TH", "fa_IR", "ar_EG"}) {
        const test::TextEnvironment world("2026-03-04T08:41:00Z", locale);
        EXPECT_EQ(world.formatters.calendarEventOccurrence().string(world->now()), "20260304T084100Z")
            << locale;
    }
    const test::TextEnvironment english("2026-03-04T08:41:00Z");
    EXPECT_EQ(english.formatters.timeRemaining(59.9), "59s remaining");
    EXPECT_EQ(english.formatters.timeRemaining(0), "0s remaining");
}

TEST(Formatters, ReadAsTheLocaleWrites) {
    const char* const cases[][12] = {
        {"en_US", "9:05_PM", "tomorrow, 9:05_PM", "Mar 13, 2026, 9:41_AM", "March 5, 2026", "Thu, Mar 5",
         "Thursday", "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds",
         "2 hours ago"},
        {"en_GB", "21:05", "tomorrow, 21:05", "13 Mar 2026, 09:41", "5 March 2026", "Thu, 5 Mar", "Thursday",
         "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds", "2 hours ago"},
        {"de_DE", "21:05", "morgen, 21:05", "13.03.2026, 09:41", "5. März 2026", "Do., 5. März", "Donnerstag",
         "1_Tag 2_h", "1_Tag 2_h 3_min", "1 Tag, 2 Stunden und 3 Minuten",
         "26 Stunden, 3 Minuten und 4 Sekunden", "vor 2 Stunden"},
        {"he_IL", "21:05", "מחר, 21:05", "13 במרץ 2026, 9:41", "5 במרץ 2026", "יום ה׳, 5 במרץ", "יום חמישי",
         "יום, שעתיים", "יום, שעתיים, 3 דק׳", "יום 1, שעתיים ו-3 דקות", "26 שעות, 3 דקות ו-4 שניות",
         "לפני שעתיים"},
        // Without a string table: dates as the locale writes them, words in the language of the texts.
        {"fr_FR", "21:05", "tomorrow, 21:05", "13 mars 2026, 09:41", "5 mars 2026", "jeu. 5 mars", "jeudi",
         "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds", "2 hours ago"},
        {"ja_JP", "21:05", "tomorrow, 21:05", "2026/03/13 9:41", "2026年3月5日", "3月5日(木)", "木曜日",
         "1d 2h", "1d 2h 3m", "1 day, 2 hours, 3 minutes", "26 hours, 3 minutes, 4 seconds", "2 hours ago"},
        {"ar_EG", "٩:٠٥ م", "tomorrow, ٩:٠٥ م", "١٣\u200F/٠٣\u200F/٢٠٢٦، ٩:٤١ ص", "٥ مارس ٢٠٢٦",
         "الخميس، ٥ مارس", "الخميس", "١d ٢h", "١d ٢h ٣m", "١ day, ٢ hours, ٣ minutes",
         "٢٦ hours, ٣ minutes, ٤ seconds", "٢ hours ago"}};
    for (const auto& [locale, time, tomorrow, inNineDays, dateText, dayAndMonth, weekDay, countdown, duration,
                      spoken, offset, relative] : cases) {
        const test::TextEnvironment world("2026-03-04T08:41:00Z", locale);
        const Formatters& f = world.formatters;
        const platform::Date now = world->now();
        const platform::Date date = at("2026-03-05T21:05:07.9+01:00");
        EXPECT_EQ(shown(f.timeOnly().string(date)), time);
        EXPECT_EQ(shown(f.timeAndDateFormatter().string(date, now)), tomorrow);
        EXPECT_EQ(shown(f.timeAndDateFormatter().string(now.addingTimeInterval(days(9)), now)), inNineDays);
        EXPECT_EQ(f.dateOnly().string(date), dateText);
        EXPECT_EQ(f.dateOnlyNoYearWeekDay().string(date), dayAndMonth);
        EXPECT_EQ(f.weekDay().string(date), weekDay);
        EXPECT_EQ(shown(f.countdownFormatter().string(now, now.addingTimeInterval(93784)).value()),
                  countdown);
        EXPECT_EQ(shown(f.durationFormatter().string(93784).value()), duration);
        EXPECT_EQ(f.durationFormatterForAccessibility().string(93784), spoken);
        EXPECT_EQ(f.durationFormatterForTimeOffset().string(93784), offset);
        EXPECT_EQ(formattedRelativeTime(now.addingTimeInterval(-7300), now, f), relative);
    }
}

TEST(Formatters, SpeakTheLanguageOfTheirOwnEnvironment) {
    constexpr double minute = 60;
    constexpr double hour = 3600;
    constexpr double day = 24 * hour;
    const std::tuple<double, const char*, const char*, const char*, const char*, const char*, const char*,
                     const char*>
        cases[] = {
            {minute, "en_US", "1m", "1m remaining", "in 1_m", "1_m ago", "1_minutes left", "1m"},
            {hour + minute, "en_US", "1h 1m", "1h remaining", "in 1_h 1_m", "1_h 1_m ago",
             "1_hours 1_minutes left", "1h01"},
            {day + 15 * hour, "en_US", "1d 15h", "1d remaining", "in 1_d", "1_d ago", "1_days left", "1d"},
            {2 * day, "en_US", "2d", "2d remaining", "in 2_d", "2_d ago", "2_days left", "2d"},
            {minute, "de_DE", "1_min", "noch 1_min", "in 1_min", "vor 1_min", "noch 1_Minute", "1_min"},
            {hour + minute, "de_DE", "1_h 1_min", "noch 1_h", "in 1_h 1_min", "vor 1_h 1_min",
             "noch 1_Stunde 1_Minute", "1h01"},
            {day, "de_DE", "1_Tag", "noch 1_Tag", "morgen 12:00", "vor 24_h 0_min",
             "noch 24_Stunden 0_Minuten", "morgen 12:00"},
            {day + 15 * hour, "de_DE", "1_Tag 15_h", "noch 1_Tag", "in 1_Tag", "vor 1_Tag", "noch 1_Tag",
             "1_T"},
            {2 * day, "de_DE", "2_Tage", "noch 2_Tage", "in 2_Tagen", "vor 2_Tagen", "noch 2_Tage", "2_T"},
            {minute, "he_IL", "דקה", "עוד דקה", "בעוד 1_דק׳", "לפני 1_דק׳", "עוד 1_דקה", "1_דק׳"},
            {hour + minute, "he_IL", "שעה, דקה", "עוד שעה", "בעוד 1_שע׳ 1_דק׳", "לפני 1_שע׳ 1_דק׳",
             "עוד 1_שעה 1_דקה", "1_שע׳_01"},
            {day + 15 * hour, "he_IL", "יום, 15 שע׳", "עוד יום", "בעוד 1_יום", "לפני 1_יום", "עוד 1_יום",
             "1_יום"},
            {day, "he_IL", "יום", "עוד יום", "מחר 12:00", "לפני 24_שע׳ 0_דק׳", "עוד 24_שעות 0_דקות",
             "מחר 12:00"},
            {2 * day, "he_IL", "יומיים", "עוד יומיים", "בעוד 2_ימים", "לפני 2_ימים", "עוד 2_ימים", "2_ימים"}};
    const char* noon = "2026-03-04T12:00:00+01:00";
    const test::TextEnvironment german(noon, "de_DE");
    const test::TextEnvironment hebrew(noon, "he_IL");
    const test::TextEnvironment english(noon);
    const platform::Date now = at(noon);
    for (const auto& [seconds, identifier, length, remaining, in, ago, spoken, compact] : cases) {
        const std::string locale = identifier;
        const Formatters& f = (locale == "de_DE" ? german : locale == "he_IL" ? hebrew : english).formatters;
        const platform::Date date = now.addingTimeInterval(seconds);
        EXPECT_EQ(shown(f.durationFormatter().string(seconds).value()), length) << locale;
        EXPECT_EQ(shown(f.timeRemaining(seconds).value()), remaining) << locale;
        EXPECT_EQ(shown(formattedShortRelativeTime(date, now, false, false, f)), in) << locale;
        EXPECT_EQ(shown(formattedShortRelativeTime(now, date, false, false, f)), ago) << locale;
        EXPECT_EQ(shown(formattedShortRelativeTime(date, now, true, true, f)), spoken) << locale;
        EXPECT_EQ(shown(formattedCompactRelativeTime(date, now, false, f)), compact) << locale;
    }
    const auto onAndAt = [](const test::TextEnvironment& world, const platform::DateFormatter& dayFormatter) {
        return formattedWithOnAndAt(at("2026-03-09T09:41:00+01:00"), dayFormatter,
                                    world.formatters.timeOnly(), world.formatters, world->now());
    };
    EXPECT_EQ(onAndAt(german, german.formatters.weekDay()), "am Montag um 09:41");
    EXPECT_EQ(onAndAt(hebrew, hebrew.formatters.weekDay()), "ביום שני בשעה 9:41");
    EXPECT_EQ(onAndAt(hebrew, hebrew.formatters.dateOnly()), "ב־9 במרץ 2026 בשעה 9:41");
    EXPECT_EQ(localizedSnoozeTime(15, german.formatters), "15 Minuten");
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
    for (const char* locale : {"de_DE", "ar_EG", "en_US", "ja_JP", "he_IL"}) {
        const test::TextEnvironment world("2026-10-24T08:41:00Z", locale);
        const platform::Date now = world->now();
        const auto dateOf = [now](int step) { return now.addingTimeInterval(step * 7321.0); };
        std::vector<std::string> expected;
        const Formatters alone(world);
        for (int step = 0; step < steps; ++step)
            expected.push_back(everyText(dateOf(step), now, alone));

        test::onThreads(4, [&](int) {
            for (int step = 0; step < steps; ++step)
                EXPECT_EQ(everyText(dateOf(step), now, world.formatters),
                          expected[static_cast<std::size_t>(step)]);
        });
    }
}

}  // namespace
}  // namespace hbr
