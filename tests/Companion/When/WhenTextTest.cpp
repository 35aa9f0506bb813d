#include <When/WhenText.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using ::testing::HasSubstr;

/// What is read, in the form that can be typed, or "refused: " and why.
std::string read(const test::TestEnvironment& world, const char* text) {
    try {
        return hbr::typedMoment(hbr::whenOf(text, *world.ref()), world->calendar);
    } catch (const hbr::WhenRefusal& refusal) {
        return "refused: " + std::string(refusal.what());
    }
}

TEST(WhenText, ReadsWhatPeopleTypeInEveryShippedLanguage) {
    // A Wednesday, ten o'clock in Berlin.
    const test::TestEnvironment english("2026-11-25T09:00:00Z");
    const test::TestEnvironment german("2026-11-25T09:00:00Z", "Europe/Berlin", "de_DE");
    const std::pair<const char*, const char*> cases[] = {
        {"tomorrow 9:00", "2026-11-26 09:00"},
        {"Tomorrow at 9am", "2026-11-26 09:00"},
        {"9 pm tomorrow", "2026-11-26 21:00"},
        {"12am tomorrow", "2026-11-26 00:00"},
        {"12 p.m. tomorrow", "2026-11-26 12:00"},
        {"tomorrow noon", "2026-11-26 12:00"},
        {"day after tomorrow 8:30", "2026-11-27 08:30"},
        {"14:30", "2026-11-25 14:30"},
        {"today 10:01", "2026-11-25 10:01"},
        {"fri 14:30", "2026-11-27 14:30"},
        {"Friday, November 27, 2026 at 2:30\u202FPM", "2026-11-27 14:30"},
        {"2:30pm on Fri", "2026-11-27 14:30"},
        {"thurs 8:00", "2026-11-26 08:00"},
        {"wed 9:00", "2026-12-02 09:00"},
        {"next wed 18:00", "2026-12-02 18:00"},
        {"in 20m", "2026-11-25 10:20"},
        {"20 min", "2026-11-25 10:20"},
        {"in 1h30", "2026-11-25 11:30"},
        {"in 1h30m", "2026-11-25 11:30"},
        {"in 2 hours and 5 minutes", "2026-11-25 12:05"},
        {"in an hour", "2026-11-25 11:00"},
        {"in half an hour", "2026-11-25 10:30"},
        {"in 3 days", "2026-11-28 10:00"},
        {"in 1 week 9:00", "2026-12-02 09:00"},
        {"2026-12-01 08:00", "2026-12-01 08:00"},
        {"2026-12-01T08:00", "2026-12-01 08:00"},
        {"2026-12-01T08:00:00-05:00", "2026-12-01 14:00"},
        {"1.12.2026 8:00", "2026-12-01 08:00"},
        {"1.12. 8:00", "2026-12-01 08:00"},
        {"1.2. 8 Uhr", "2027-02-01 08:00"},
        {"1st of Dec 8am", "2026-12-01 08:00"},
        {"December 1 8:00", "2026-12-01 08:00"},
        {"13/1/2027 8:00", "2027-01-13 08:00"},
        {"29 feb 8:00", "2028-02-29 08:00"},
        {"morgen um 9 Uhr", "2026-11-26 09:00"},
        {"übermorgen 14 Uhr 30", "2026-11-27 14:30"},
        {"Fr 14.30", "2026-11-27 14:30"},
        {"um 14:30 am Freitag", "2026-11-27 14:30"},
        {"mittags am 1. Dezember", "2026-12-01 12:00"},
        {"10.30", "2026-11-25 10:30"},
        {"in 20 Minuten", "2026-11-25 10:20"},
        {"in einer halben Stunde", "2026-11-25 10:30"},
        {"in zwei Wochen", "zwei"},
        {"מחר 9:00", "2026-11-26 09:00"},
        {"מחר ב־9:00", "2026-11-26 09:00"},
        {"ביום שישי בשעה 14:30", "2026-11-27 14:30"},
        {"שבת 20:00", "2026-11-28 20:00"},
        {"יום ו׳ 9:00", "2026-11-27 09:00"},
        {"1 בדצמבר 8:00", "2026-12-01 08:00"},
        {"בעוד 20 דקות", "2026-11-25 10:20"},
        {"עוד שעתיים", "2026-11-25 12:00"},
        {"בעוד חצי שעה", "2026-11-25 10:30"}};
    for (const auto& [text, expected] : cases) {
        EXPECT_THAT(read(english, text), HasSubstr(expected)) << text;
        EXPECT_THAT(read(german, text), HasSubstr(expected)) << text;
    }
}

TEST(WhenText, RefusesWhatIsAmbiguousPastOrIncompleteAndSaysWhatToType) {
    const test::TestEnvironment world("2026-11-25T09:00:00Z");
    const std::pair<const char*, const char*> cases[] = {
        {"9:00", "09:00 today is in the past; if you mean tomorrow, type \"tomorrow 09:00\""},
        {"10:00", "is in the past"},
        {"today 9:00", "2026-11-25 09:00 is in the past"},
        {"2026-11-24 08:00", "2026-11-24 08:00 is in the past"},
        {"2026-11-25T09:00:00Z", "is in the past"},
        {"12/1/2026 8:00", "type 2026-12-01 or 2026-01-12"},
        {"12/1 8:00", "type 12.1. for day 12 of month 1, or 1.12."},
        {"10.11", "can be a day or a time: type 10.11. or 10:11"},
        {"wed 18:00", "type \"today 18:00\" or \"2026-12-02 18:00\""},
        {"next fri 9:00", "can be 2026-11-27 or 2026-12-04"},
        {"tomorrow 9", "\"9\" alone is ambiguous; type 9:00, 9am or 9pm"},
        {"tomorrow", "the time of day is missing; type for example \"tomorrow 9:00\""},
        {"fri", "the time of day is missing"},
        {"midnight", "can be the beginning or the end of a day"},
        {"thu 27 november 2026 9:00", "2026-11-27 is another day of the week"},
        {"2026-02-30 9:00", "there is no 2026-02-30"},
        {"31.2. 9:00", "there is no 02-31"},
        {"tomorrow 25:00", "there is no time"},
        {"14pm", "there is no time"},
        {"tomorrow 9:60", "there is no time"},
        {"tomorrow fri 9:00", "is another day of the week"},
        {"tomorrow 9:00 10:00", "there are two times of day"},
        {"in 20m tomorrow", "do not go together"},
        {"in 0m", "longer than zero"},
        {"in 999999999 weeks", "too far away"},
        {"in 20", "\"20\" has no unit; type 20m or 20h"},
        {"tomorow 9:00", "did you mean \"tomorrow\"?"},
        {"-5m", "not understood"},
        {"99999999999 m", "not understood"},
        {"", "there is no time in it"}};
    for (const auto& [text, expected] : cases) {
        EXPECT_THAT(read(world, text), ::testing::AllOf(HasSubstr("refused"), HasSubstr(expected))) << text;
    }
    const test::TestEnvironment german("2026-11-25T09:00:00Z", "Europe/Berlin", "de_DE");
    EXPECT_THAT(read(german, "tomorow 9:00"),
                HasSubstr("„tomorow“ ist unverständlich (meinten Sie „tomorrow“?); geben Sie"));
    EXPECT_THAT(read(german, "9:00"),
                HasSubstr("heute 09:00 ist vorbei; wenn Sie morgen meinen, geben Sie „morgen 09:00“ ein"));
}

TEST(WhenText, ATimeThatTheClocksSkipOrRepeatIsRefused) {
    const test::TestEnvironment spring("2026-03-28T09:00:00Z");
    EXPECT_THAT(read(spring, "tomorrow 2:30"), HasSubstr("does not exist"));
    EXPECT_EQ(read(spring, "tomorrow 3:00"), "2026-03-29 03:00");
    const test::TestEnvironment autumn("2026-10-24T09:00:00Z");
    EXPECT_THAT(read(autumn, "tomorrow 2:30"),
                HasSubstr("type \"2026-10-25T02:30:00+02:00\" or \"2026-10-25T02:30:00+01:00\""));
    EXPECT_EQ(read(autumn, "tomorrow 1:59"), "2026-10-25 01:59");
    EXPECT_EQ(read(autumn, "tomorrow 3:00"), "2026-10-25 03:00");
    EXPECT_EQ(hbr::whenOf("2026-10-25T02:30:00+01:00", *autumn.ref()), test::at("2026-10-25T01:30:00Z"));
    // Half an hour back, and the first reading lies before the change.
    const test::TestEnvironment island("2026-04-04T03:00:00Z", "Australia/Lord_Howe");
    EXPECT_THAT(read(island, "tomorrow 1:45"), HasSubstr("exists twice"));
    EXPECT_EQ(read(island, "tomorrow 1:15"), "2026-04-05 01:15");
    // A length of time knows no clock.
    EXPECT_THROW(hbr::afterLength("tomorrow 9:00", *island.ref()), hbr::WhenRefusal);
    EXPECT_THROW(hbr::afterLength("", *island.ref()), hbr::WhenRefusal);
    const test::TestEnvironment night("2026-10-25T00:30:00Z");
    EXPECT_EQ(hbr::afterLength("1h", *night.ref()), test::at("2026-10-25T01:30:00Z"));
}

}  // namespace
