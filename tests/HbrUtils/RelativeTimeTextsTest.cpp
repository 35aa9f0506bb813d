#include <HbrUtils/RelativeTimeTexts.h>

#include <gmock/gmock.h>

#include <support/TextEnvironment.h>

namespace hbr {
namespace {

using ::test::at;
using test::shown;
using testing::_;
using testing::ElementsAre;

/// The texts of a widget's row, of a bar, of an event under way and of a screen reader.
std::array<std::string, 4> texts(platform::Date date, platform::Date now, const Formatters& formatters) {
    return {shown(formattedShortRelativeTime(date, now, false, false, formatters)),
            shown(formattedCompactRelativeTime(date, now, false, formatters)),
            shown(formattedShortRelativeTime(date, now, false, true, formatters)),
            shown(formattedShortRelativeTime(date, now, true, false, formatters))};
}

TEST(RelativeTimeTexts, AmountsChangeTheirUnitAfterTheBound) {
    const std::tuple<double, const char*, const char*, const char*, const char*> cases[] = {
        // Seconds before the other date.
        {0, "now", "now", "now", "now"},
        {29.4, "now", "now", "now", "now"},
        {29.5, "1_m ago", "1m ago", "1_m left", "1_minutes ago"},
        {30, "1_m ago", "1m ago", "1_m left", "1_minutes ago"},
        {60, "1_m ago", "1m ago", "1_m left", "1_minutes ago"},
        {61, "1_m ago", "1m ago", "1_m left", "1_minutes ago"},
        {720, "12_m ago", "12m ago", "12_m left", "12_minutes ago"},
        {3600, "60_m ago", "60m ago", "60_m left", "60_minutes ago"},
        {3601, "1_h 0_m ago", "1h00 ago", "1_h 0_m left", "1_hours 0_minutes ago"},
        {7500, "2_h 5_m ago", "2h05 ago", "2_h 5_m left", "2_hours 5_minutes ago"},
        {86400, "24_h 0_m ago", "24h00 ago", "24_h 0_m left", "24_hours 0_minutes ago"},
        {86401, "1_d ago", "1d ago", "1_d left", "1_days ago"},
        {1.5 * 86400, "1_d ago", "1d ago", "1_d left", "1_days ago"},
        {3 * 86400, "3_d ago", "3d ago", "3_d left", "3_days ago"}};
    const test::TextEnvironment world("2026-03-04T09:41:00Z");
    const platform::Date now = world->now();
    for (const auto& [seconds, ago, compact, left, spoken] : cases) {
        EXPECT_THAT(texts(now.addingTimeInterval(-seconds), now, world.formatters),
                    ElementsAre(ago, compact, left, spoken))
            << seconds;
    }
}

TEST(RelativeTimeTexts, TheNextDayIsNamedFromMoreThanFourHoursAway) {
    const char* const cases[][5] = {
        {"2026-03-05T09:00:00+01:00", "2026-03-04T22:00:00+01:00", "tomorrow 9:00_AM", "tmr 9:00_AM",
         "11_h 0_m left"},
        {"2026-03-05T09:00:00+01:00", "2026-03-05T06:00:00+01:00", "in 3_h 0_m", "3h00", "3_h 0_m left"},
        {"2026-03-05T01:00:00+01:00", "2026-03-04T22:00:00+01:00", "in 3_h 0_m", "3h00", "3_h 0_m left"},
        {"2026-03-05T02:00:00+01:00", "2026-03-04T22:00:00+01:00", "in 4_h 0_m", "4h00", "4_h 0_m left"},
        {"2026-03-05T02:00:01+01:00", "2026-03-04T22:00:00+01:00", "tomorrow 2:00_AM", "tmr 2:00_AM",
         "4_h 0_m left"},
        {"2026-03-05T22:00:00+01:00", "2026-03-04T22:00:00+01:00", "tomorrow 10:00_PM", "tmr 10:00_PM",
         "24_h 0_m left"},
        {"2026-03-06T00:00:00+01:00", "2026-03-04T22:00:00+01:00", "in 1_d", "1d", "1_d left"},
        {"2026-03-04T22:00:20+01:00", "2026-03-04T22:00:00+01:00", "now", "now", "now"},
        // The clocks go forward in the night: 4 hours and a half by the clock, three and a half by time.
        {"2026-03-29T03:00:00+02:00", "2026-03-28T22:30:00+01:00", "in 3_h 30_m", "3h30", "3_h 30_m left"}};
    const test::TextEnvironment world("2026-03-04T09:41:00Z");
    for (const auto& [dateText, nowText, text, compact, currentShort] : cases) {
        EXPECT_THAT(texts(at(dateText), at(nowText), world.formatters),
                    ElementsAre(text, compact, currentShort, _))
            << dateText;
    }
}

TEST(RelativeTimeTexts, OnAndAtNameTheDayUnlessItIsToday) {
    const test::TextEnvironment world("2026-03-04T09:41:00Z");
    const auto text = [&world](const char* date) {
        return shown(formattedWithOnAndAt(at(date), world.formatters.weekDay(), world.formatters.timeOnly(),
                                          world.formatters, world->now()));
    };
    EXPECT_EQ(text("2026-03-04T23:59:00+01:00"), "at 11:59_PM");
    EXPECT_EQ(text("2026-03-09T09:41:00+01:00"), "on Monday at 9:41_AM");
}

TEST(RelativeTimeTexts, CountsOfMinutesAreWords) {
    const test::TextEnvironment world("2026-03-04T09:41:00Z");
    EXPECT_EQ(formattedMinutes(90, world.formatters), "1 hour, 30 minutes");
    EXPECT_EQ(formattedMinutes(0, world.formatters), "0 minutes");
    EXPECT_EQ(localizedSnoozeTime(1), "1 minute");
    EXPECT_EQ(localizedSnoozeTime(15), "15 minutes");
    EXPECT_EQ(formattedRelativeTime(world->now().addingTimeInterval(300), world->now(), world.formatters),
              "in 5 minutes");
}

}  // namespace
}  // namespace hbr
