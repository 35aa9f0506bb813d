#include <TimeAndText/DateFormatter.h>
#include <TimeAndText/DurationFormatter.h>
#include <TimeAndText/RelativeDateTimeFormatter.h>
#include <TimeAndText/Text.h>

#include <gmock/gmock.h>

namespace platform {
namespace {

using Style = DateFormatter::Style;

/// Of one who uses the same language for texts and formats.
Locale locale(std::string identifier) {
    const std::string language = identifier.substr(0, identifier.find('_'));
    return {.identifier = std::move(identifier), .languages = {language}};
}
Calendar calendarIn(const char* zone) {
    return Calendar(TimeZone::named(zone).value());
}
Date at(const char* rfc3339) {
    return parseRfc3339(rfc3339).value();
}

/// Narrow no-break spaces as blanks: which of the two precedes AM is up to the library's data.
std::string folded(std::string text) {
    for (std::size_t found; (found = text.find("\u202F")) != std::string::npos;)
        text.replace(found, 3, " ");
    return text;
}

TEST(DateFormatter, WritesAsTheLocaleDoes) {
    const char* const cases[][5] = {
        {"en_GB", "21:05", "4 March 2026", "Wed, 4 Mar", "4 Mar 2026, 21:05"},
        {"en_GB@hours=h12", "9:05 pm", "4 March 2026", "Wed, 4 Mar", "4 Mar 2026, 9:05 pm"},
        {"en_GB@hours=h23", "21:05", "4 March 2026", "Wed, 4 Mar", "4 Mar 2026, 21:05"},
        // The letter in its pattern is a word: "21 h 05".
        {"fr_CA@hours=h12", "9 h 05 p.m.", "4 mars 2026", "mer. 4 mars", "4 mars 2026, 9 h 05 p.m."},
        {"en_US@hours=h23", "21:05", "March 4, 2026", "Wed, Mar 4", "Mar 4, 2026, 21:05"},
        {"ar_EG", "٩:٠٥ م", "٤ مارس ٢٠٢٦", "الأربعاء، ٤ مارس", "٠٤\u200F/٠٣\u200F/٢٠٢٦، ٩:٠٥ م"},
        // Only texts follow the locale's own calendar.
        {"th_TH", "21:05", "4 มีนาคม 2569", "พ. 4 มี.ค.", "4 มี.ค. 2569 21:05"}};
    const Calendar berlin = calendarIn("Europe/Berlin");
    const Date date = at("2026-03-04T20:05:59.999Z");
    for (const auto& [identifier, shortTime, longDate, skeleton, mediumAndShort] : cases) {
        const Locale l = locale(identifier);
        const auto styled = [&](Style day, Style time) {
            return folded(DateFormatter::withStyles(l, berlin, day, time).string(date));
        };
        EXPECT_EQ(styled(Style::none, Style::short_), shortTime) << identifier;
        EXPECT_EQ(styled(Style::long_, Style::none), longDate) << identifier;
        EXPECT_EQ(styled(Style::medium, Style::short_), mediumAndShort) << identifier;
        EXPECT_EQ(DateFormatter::withTemplate(l, berlin, "EdMMM").string(date), skeleton) << identifier;
    }
}

TEST(DateFormatter, TakesOffsetsFromTheSystemsZones) {
    const char* const cases[][3] = {{"America/Mexico_City", "2026-07-01T12:00:00Z", "2026-07-01 06:00:00"},
                                    {"Africa/Cairo", "2026-07-01T12:00:00Z", "2026-07-01 15:00:00"},
                                    {"Asia/Almaty", "2026-07-01T12:00:00Z", "2026-07-01 17:00:00"},
                                    {"America/New_York", "2026-03-08T06:59:59Z", "2026-03-08 01:59:59"},
                                    {"America/New_York", "2026-03-08T07:00:00Z", "2026-03-08 03:00:00"},
                                    {"Europe/Berlin", "2060-07-01T12:00:00Z", "2060-07-01 14:00:00"},
                                    {"Asia/Kolkata", "1999-12-31T18:30:00Z", "2000-01-01 00:00:00"}};
    for (const auto& [zoneName, moment, expected] : cases) {
        const auto format =
            DateFormatter::withPattern(locale("en_US_POSIX"), calendarIn(zoneName), "yyyy-MM-dd HH:mm:ss");
        EXPECT_EQ(format.string(at(moment)), expected) << zoneName;
    }
}

TEST(DateFormatter, NearDaysAreWordsByTheCalendarOfTheZone) {
    const char* const cases[][3] = {{"en_US", "2026-11-22T23:00:00+01:00", "today, 11:00 PM"},
                                    {"en_US", "2026-11-23T00:00:00+01:00", "tomorrow, 12:00 AM"},
                                    {"en_US", "2026-11-21T23:59:00+01:00", "yesterday, 11:59 PM"},
                                    {"en_US", "2026-11-24T14:45:00+01:00", "Nov 24, 2026, 2:45 PM"},
                                    {"en_US@hours=h23", "2026-11-23T14:45:00+01:00", "tomorrow, 14:45"},
                                    {"de_DE", "2026-11-24T14:45:00+01:00", "übermorgen, 14:45"},
                                    {"de_DE", "2026-11-25T14:45:00+01:00", "25.11.2026, 14:45"},
                                    {"fr_FR", "2026-11-22T14:45:00+01:00", "aujourd’hui, 14:45"},
                                    {"uk_UA", "2026-11-20T14:45:00+01:00", "позавчора, 14:45"},
                                    {"ja_JP", "2026-11-23T14:45:00+01:00", "明日 14:45"},
                                    {"ar_EG", "2026-11-23T14:45:00+01:00", "غدًا، ٢:٤٥ م"},
                                    {"he_IL", "2026-11-23T14:45:00+01:00", "מחר, 14:45"}};
    const Date now = at("2026-11-22T22:30:00+01:00");
    for (const auto& [identifier, date, expected] : cases) {
        const auto format =
            DateFormatter::relativeDateAndTime(locale(identifier), calendarIn("Europe/Berlin"));
        EXPECT_EQ(folded(format.string(at(date), now)), expected) << identifier;
    }
}

TEST(DurationFormatter, DropsZeroUnitsAndCutsOff) {
    using Units = DurationFormatter::UnitsStyle;
    const DurationFormatter::Configuration short_{};
    const DurationFormatter::Configuration two{.maximumUnitCount = 2};
    const DurationFormatter::Configuration one{.seconds = true, .maximumUnitCount = 1};
    const DurationFormatter::Configuration full{.style = Units::full};
    const DurationFormatter::Configuration offset{.style = Units::full, .days = false, .seconds = true};
    constexpr double hour = 3600;
    const std::tuple<const char*, DurationFormatter::Configuration, double, const char*> cases[] = {
        {"en_US", short_, 2 * hour + 5 * 60 + 59.9, "2h 5m"},
        {"en_US", short_, 26 * hour, "1d 2h"},
        {"en_US", short_, 59.9, "0m"},
        {"en_US", short_, 0, "0m"},
        {"en_US", short_, 60, "1m"},
        {"en_US", short_, -(2 * hour + 60), "-2h -1m"},
        {"en_US", two, 24 * hour + 7 * 60, "1d 7m"},
        {"en_US", two, 26 * hour + 7 * 60, "1d 2h"},
        {"en_US", one, 2 * hour - 1, "1h"},
        {"en_US", one, 59.9, "59s"},
        {"en_US", one, 0.9, "0s"},
        {"en_US", full, 26 * hour + 60, "1 day, 2 hours, 1 minute"},
        {"en_US", full, 90 * 60, "1 hour, 30 minutes"},
        {"en_US", offset, 26 * hour + 30, "26 hours, 30 seconds"},
        {"de_DE", full, 26 * hour + 60, "1 Tag, 2 Stunden und 1 Minute"}};
    for (const auto& [identifier, configuration, seconds, expected] : cases) {
        const DurationFormatter format(locale(identifier), calendarIn("UTC"), configuration);
        EXPECT_EQ(format.string(seconds), expected) << identifier << " " << seconds;
    }
    const DurationFormatter format(locale("en_US"), calendarIn("UTC"), short_);
    EXPECT_EQ(format.string(std::numeric_limits<double>::infinity()), std::nullopt);
    EXPECT_EQ(format.string(std::numeric_limits<double>::quiet_NaN()), std::nullopt);
    EXPECT_NE(format.string(1e300), std::nullopt);
}

TEST(DurationFormatter, AbbreviatesSoThatTheLanguageCanBeRead) {
    constexpr double minute = 60;
    constexpr double hour = 3600;
    constexpr double day = 24 * hour;
    static constexpr double lengths[] = {minute, hour + minute, day, day + 15 * hour, 2 * day};
    const std::pair<const char*, std::array<const char*, std::size(lengths)>> cases[] = {
        {"en_US", {"1m", "1h 1m", "1d", "1d 15h", "2d"}},
        {"de_DE", {"1 Min.", "1 Std., 1 Min.", "1 Tg.", "1 Tg., 15 Std.", "2 Tg."}},
        {"he_IL", {"דקה", "שעה, דקה", "יום", "יום, 15 שע׳", "יומיים"}},
        {"fr_FR", {"1min", "1h 1min", "1j", "1j 15h", "2j"}},
        {"es_ES", {"1min", "1h 1min", "1d", "1d 15h", "2d"}},
        {"pt_BR", {"1 min", "1 h 1 min", "1 dia", "1 dia 15 h", "2 dias"}},
        {"it_IT", {"1min", "1h 1min", "1g", "1g 15h", "2gg"}},
        {"nl_NL", {"1 min", "1 uur, 1 min", "1 dag", "1 dag, 15 uur", "2 dagen"}},
        {"pl_PL", {"1 min", "1 godz. i 1 min", "1 doba", "1 doba i 15 godz.", "2 doby"}},
        {"ja_JP", {"1 分", "1 時間 1 分", "1 日", "1 日 15 時間", "2 日"}},
        {"zh_CN", {"1分钟", "1小时1分钟", "1天", "1天15小时", "2天"}},
        {"ar_EG", {"١ د", "١ س و١ د", "يوم", "يوم و١٥ س", "يومان"}}};
    for (const auto& [identifier, texts] : cases) {
        const DurationFormatter format(locale(identifier), calendarIn("UTC"), {});
        for (std::size_t i = 0; i < std::size(lengths); ++i)
            EXPECT_EQ(folded(format.string(lengths[i]).value()), texts.at(i)) << identifier;
    }
}

TEST(DurationFormatter, CountsDaysBetweenDatesByTheWallClock) {
    const char* const cases[][3] = {{"2026-03-07T12:00:00-05:00", "2026-03-08T12:00:00-04:00", "1d"},
                                    {"2026-03-07T12:00:00-05:00", "2026-03-08T11:59:59-04:00", "22h 59m"},
                                    {"2026-03-08T12:00:00-04:00", "2026-03-07T12:00:00-05:00", "-1d"},
                                    {"2026-10-31T12:00:00-04:00", "2026-11-01T12:30:00-05:00", "1d 30m"},
                                    {"2026-10-31T12:00:00-04:00", "2026-11-01T11:30:00-05:00", "24h 30m"},
                                    {"2026-06-01T23:59:00-04:00", "2026-06-02T00:01:00-04:00", "2m"},
                                    {"2026-06-02T00:01:00-04:00", "2026-06-01T23:59:00-04:00", "-2m"}};
    const DurationFormatter format(locale("en_US"), calendarIn("America/New_York"), {});
    for (const auto& [from, to, expected] : cases) {
        EXPECT_EQ(format.string(at(from), at(to)), expected) << from << " " << to;
    }
}

TEST(RelativeDateTimeFormatter, NamesTheLargestUnitThatDiffers) {
    constexpr double day = 86400;
    const std::tuple<const char*, double, const char*> cases[] = {{"en_US", 359, "in 5 minutes"},
                                                                  {"en_US", -7300, "2 hours ago"},
                                                                  {"en_US", day - 1, "in 23 hours"},
                                                                  {"en_US", day, "in 1 day"},
                                                                  {"en_US", 8 * day, "in 1 week"},
                                                                  {"en_US", 31 * day, "in 1 month"},
                                                                  {"en_US", -366 * day, "1 year ago"},
                                                                  {"en_US", 0, "in 0 seconds"},
                                                                  {"en_US", -0.5, "0 seconds ago"},
                                                                  {"de_DE", -7300, "vor 2 Stunden"},
                                                                  {"ja_JP", 359, "5 分後"},
                                                                  {"ar_EG", 359, "خلال ٥ دقائق"}};
    const Date now = at("2026-03-04T09:41:00Z");
    for (const auto& [identifier, seconds, expected] : cases) {
        const RelativeDateTimeFormatter format(locale(identifier), calendarIn("Europe/Berlin"));
        EXPECT_EQ(format.string(now.addingTimeInterval(seconds), now), expected)
            << identifier << " " << seconds;
    }
}

TEST(FormatEngines, WordsFollowTheLanguageOfTextsAndDatesTheFormats) {
    // Languages, formats; half an hour past one, two hours ago, tomorrow, in a week.
    const char* const cases[][6] = {
        {"en-US", "de_DE", "1 hour, 30 minutes", "2 hours ago", "tomorrow, 21:05", "11.03.2026, 21:05"},
        {"de", "en_US", "1 Stunde, 30 Minuten", "vor 2 Stunden", "morgen, 9:05 PM", "Mar 11, 2026, 9:05 PM"},
        {"en", "ar_EG", "١ hour, ٣٠ minutes", "٢ hours ago", "tomorrow, ٩:٠٥ م",
         "١١\u200F/٠٣\u200F/٢٠٢٦، ٩:٠٥ م"},
        {"ar", "en_GB", "ساعة و30 دقيقة", "قبل ساعتين", "غدًا، 21:05", "11 Mar 2026, 21:05"},
        // A region of the formats alone is that of the words as well; an unknown language is skipped.
        {"pt", "pt_PT", "1 hora e 30 minutos", "há 2 horas", "amanhã, 21:05", "11/03/2026, 21:05"},
        {"tlh,not a tag,fr", "en_GB", "1\u00A0heure et 30 minutes", "il y a 2 heures", "demain, 21:05",
         "11 Mar 2026, 21:05"},
        {"", "es_ES", "1 hora y 30 minutos", "hace 2 horas", "mañana, 21:05", "11 mar 2026, 21:05"}};
    const Calendar berlin = calendarIn("Europe/Berlin");
    const Date now = at("2026-03-04T20:05:00Z");
    for (const auto& [languages, formats, length, distance, tomorrow, nextWeek] : cases) {
        const Locale mixed{.identifier = formats, .languages = split(languages, ",", false)};
        const DurationFormatter spoken(mixed, berlin, {.style = DurationFormatter::UnitsStyle::full});
        EXPECT_EQ(spoken.string(5400), length) << formats;
        EXPECT_EQ(RelativeDateTimeFormatter(mixed, berlin).string(now.addingTimeInterval(-7300), now),
                  distance)
            << formats;
        const auto relative = DateFormatter::relativeDateAndTime(mixed, berlin);
        EXPECT_EQ(folded(relative.string(berlin.addingDays(now, 1), now)), tomorrow) << formats;
        EXPECT_EQ(folded(relative.string(berlin.addingDays(now, 7), now)), nextWeek) << formats;
    }
}

TEST(Locale, LanguagesHaveADirection) {
    for (const std::string_view tag : {"he", "iw", "he-IL", "ar", "fa", "ur", "yi", "ckb", "pa-Arab"})
        EXPECT_TRUE(isRightToLeftLanguage(tag)) << tag;
    for (const std::string_view tag : {"en", "de", "pa", "ar-Latn", "zh-Hant", "", "not a language"})
        EXPECT_FALSE(isRightToLeftLanguage(tag)) << tag;
}

TEST(Locale, WritesDigitsOfItsOwn) {
    const std::pair<const char*, const char*> cases[] = {{"en_US", "1:02:03"},
                                                         {"de_DE", "1:02:03"},
                                                         {"ar_EG", "١:٠٢:٠٣"},
                                                         {"fa_IR", "۱:۰۲:۰۳"},
                                                         {"ar_EG@numbers=latn", "1:02:03"},
                                                         {"ff_Adlm_GN", "𞥑:𞥐𞥒:𞥐𞥓"}};
    for (const auto& [identifier, text] : cases)
        EXPECT_EQ(withLocalDigits("1:02:03", locale(identifier)), text) << identifier;
}

}  // namespace
}  // namespace platform
