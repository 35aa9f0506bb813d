#include <TimeAndText/NearestName.h>
#include <TimeAndText/TimeZone.h>
#include <When/DurationText.h>
#include <When/MomentText.h>
#include <gtest/gtest.h>

namespace {

TEST(DurationText, ReadsSecondsMinutesAndHours) {
    const std::pair<const char*, std::optional<std::int64_t>> cases[] = {
        {"0", 0},
        {"90", 90},
        {"90s", 90},
        {"5m", 300},
        {"1h30m", 5400},
        {"1h30", 5400},
        {"1h30m20", 5420},
        {"", std::nullopt},
        {"m", std::nullopt},
        {"-5m", std::nullopt},
        {"5 m", std::nullopt},
        {"5d", std::nullopt},
        {"1.5h", std::nullopt},
        {"9223372036854775807h", std::nullopt},
        {"99999999999999999999", std::nullopt}};
    for (const auto& [text, seconds] : cases)
        EXPECT_EQ(hbr::secondsOfDuration(text), seconds) << text;
}

TEST(MomentText, ReadsMomentsInTheUsersZone) {
    const platform::Date now = platform::parseRfc3339("2026-03-29T10:00:00Z").value();
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"Europe/Berlin", "2026-03-29T09:41:00Z", "2026-03-29T09:41:00.000Z"},
        {"Europe/Berlin", "2026-03-29", "2026-03-28T23:00:00.000Z"},
        {"Europe/Berlin", "2026-03-30", "2026-03-29T22:00:00.000Z"},
        {"Europe/Berlin", "2026-03-29T02:30", "2026-03-29T01:30:00.000Z"},
        {"Europe/Berlin", "2026-03-29 09:41:07", "2026-03-29T07:41:07.000Z"},
        {"Europe/Berlin", "today", "2026-03-28T23:00:00.000Z"},
        {"Europe/Berlin", "tomorrow", "2026-03-29T22:00:00.000Z"},
        {"Europe/Berlin", "now", "2026-03-29T10:00:00.000Z"},
        // That day began at one o'clock.
        {"Africa/Cairo", "2026-04-24", "2026-04-23T22:00:00.000Z"},
        {"Europe/Berlin", "2026-02-30", ""},
        {"Europe/Berlin", "2026-03-29T24:30", ""},
        {"Europe/Berlin", "2026-3-29", ""},
        {"Europe/Berlin", "2026-03-29T", ""},
        {"Europe/Berlin", "noon", ""},
        {"Europe/Berlin", "", ""}};
    for (const auto& [zone, text, expected] : cases) {
        const platform::Calendar calendar(platform::TimeZone::named(zone).value());
        const auto moment = hbr::momentOf(text, calendar, now);
        EXPECT_EQ(moment ? platform::formatRfc3339(*moment) : "", expected) << zone << " " << text;
    }
}

TEST(NearestName, ProposesWhatASlipMeant) {
    const std::vector<std::string> names = {"agenda", "accounts", "calendars", "settings", "Übung"};
    const std::pair<const char*, std::optional<std::string>> cases[] = {
        {"agneda", "agenda"},    {"Agenda", "agenda"},         {"cal", "calendars"},
        {"setings", "settings"}, {"acounts", "accounts"},      {"übung", "Übung"},
        {"x", std::nullopt},     {"completely", std::nullopt}, {"", std::nullopt}};
    for (const auto& [word, expected] : cases)
        EXPECT_EQ(platform::nearestName(word, names), expected) << word;
}

}  // namespace
