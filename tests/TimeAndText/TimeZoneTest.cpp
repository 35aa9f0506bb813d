#include <TimeAndText/Text.h>
#include <TimeAndText/TimeZone.h>
#include <TimeAndText/WindowsZone.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>

#include "support/TemporaryDirectory.h"

namespace platform {
namespace {

/// Sets the process's zone for as long as it lives.
class ProcessZone {
  public:
    explicit ProcessZone(const char* name) { set(name); }
    ~ProcessZone() { set("UTC"); }

  private:
    static void set(const char* name) {
        ::setenv("TZ", name, 1);
        ::tzset();
    }
};

TEST(TimeZone, AgreesWithTheSystemsLibraryForEveryZone) {
    const std::string_view names =
        "UTC America/New_York America/Mexico_City America/Sao_Paulo America/St_Johns America/Havana "
        "America/Nuuk America/Asuncion America/Caracas America/Scoresbysund Africa/Cairo "
        "Africa/Casablanca Africa/Monrovia Africa/El_Aaiun Antarctica/Troll Antarctica/Casey "
        "Asia/Kolkata Asia/Calcutta Asia/Kathmandu Asia/Tehran Asia/Gaza Asia/Beirut Asia/Almaty "
        "Asia/Pyongyang Asia/Amman Australia/Lord_Howe Australia/Sydney Australia/Eucla "
        "Europe/Berlin Europe/Dublin Europe/London Europe/Istanbul Europe/Moscow Europe/Lisbon "
        "Pacific/Apia Pacific/Chatham Pacific/Kiritimati Pacific/Norfolk Pacific/Fiji EST5EDT";
    for (const std::string& name : words(names)) {
        const auto zone = TimeZone::named(name);
        ASSERT_TRUE(zone) << name;
        const ProcessZone process(name.c_str());
        int wrong = 0;
        // 1970 to 2060 in steps that come to every hour of the day.
        for (std::time_t t = 0; t < 2840140800; t += 31 * 3600 + 1234) {
            std::tm expected{};
            ::localtime_r(&t, &expected);
            const Date moment = Date::since1970(static_cast<double>(t));
            const LocalTime local = zone->localTime(moment);
            const bool equal =
                local == LocalTime{expected.tm_year + 1900, expected.tm_mon + 1, expected.tm_mday,
                                   expected.tm_hour,        expected.tm_min,     expected.tm_sec} &&
                zone->offsetAt(moment) == expected.tm_gmtoff;
            // Back again: never later than the moment itself, and with the same reading.
            const Date back = zone->date(local);
            if (!equal || back > moment || zone->localTime(back) != local) ++wrong;
        }
        EXPECT_EQ(wrong, 0) << name;
    }
}

TEST(TimeZone, AReadingInAGapTakesTheOffsetBeforeItAndOneThatOccursTwiceIsTheFirst) {
    const std::tuple<const char*, LocalTime, LocalTime, bool> cases[] = {
        {"Europe/Berlin", {2026, 3, 29, 1, 59, 59}, {2026, 3, 29, 0, 59, 59}, false},
        {"Europe/Berlin", {2026, 3, 29, 2, 0, 0}, {2026, 3, 29, 1, 0, 0}, true},
        {"Europe/Berlin", {2026, 3, 29, 2, 59, 59}, {2026, 3, 29, 1, 59, 59}, true},
        {"Europe/Berlin", {2026, 3, 29, 3, 0, 0}, {2026, 3, 29, 1, 0, 0}, false},
        {"Europe/Berlin", {2026, 10, 25, 2, 0, 0}, {2026, 10, 25, 0, 0, 0}, false},
        {"Europe/Berlin", {2026, 10, 25, 2, 59, 59}, {2026, 10, 25, 0, 59, 59}, false},
        {"Europe/Berlin", {2026, 10, 25, 3, 0, 0}, {2026, 10, 25, 2, 0, 0}, false},
        {"Australia/Lord_Howe", {2026, 10, 4, 2, 15, 0}, {2026, 10, 3, 15, 45, 0}, true},
        {"Antarctica/Troll", {2026, 3, 29, 2, 30, 0}, {2026, 3, 29, 2, 30, 0}, true},
        {"Pacific/Apia", {2011, 12, 30, 12, 0, 0}, {2011, 12, 30, 22, 0, 0}, true},
        // Far after the end of the file's table.
        {"America/New_York", {2500, 7, 4, 12, 0, 0}, {2500, 7, 4, 16, 0, 0}, false},
        {"America/New_York", {4026, 3, 8, 2, 30, 0}, {4026, 3, 8, 7, 30, 0}, true},
        {"Europe/Dublin", {2300, 1, 15, 12, 0, 0}, {2300, 1, 15, 12, 0, 0}, false}};
    for (const auto& [zoneName, reading, utcReading, inGap] : cases) {
        const auto zone = TimeZone::named(zoneName);
        ASSERT_TRUE(zone) << zoneName;
        EXPECT_EQ(TimeZone::utc().localTime(zone->date(reading)), utcReading)
            << zoneName << " " << reading.year;
        EXPECT_EQ(zone->isInGap(reading), inGap) << zoneName << " " << reading.hour;
    }
}

TEST(TimeZone, ReadsEveryFormOfYearlyRule) {
    const std::tuple<const char*, LocalTime, int> cases[] = {
        {"<+0330>-3:30", {2026, 6, 1, 0, 0, 0}, 12600},
        {"EST5EDT,M3.2.0,M11.1.0", {2026, 3, 8, 6, 59, 59}, -18000},
        {"EST5EDT,M3.2.0,M11.1.0", {2026, 3, 8, 7, 0, 0}, -14400},
        {"EST5EDT,M3.2.0,M11.1.0", {1905, 7, 1, 0, 0, 0}, -14400},
        // Daylight time over the turn of the year, dates as days of the year.
        {"AAA0BBB,J300/0,J60/0", {2024, 2, 29, 12, 0, 0}, 3600},
        {"AAA0BBB,J300/0,J60/0", {2024, 3, 1, 0, 0, 0}, 0},
        {"AAA0BBB,59,300", {2024, 2, 29, 2, 0, 0}, 3600},
        {"AAA0BBB,59,300", {2024, 2, 29, 1, 59, 59}, 0},
        // Times before the day's beginning and days after it.
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", {2026, 3, 29, 0, 59, 59}, -7200},
        {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", {2026, 3, 29, 1, 0, 0}, -3600},
        {"EET-2EEST,M3.4.4/50,M10.4.4/50", {2027, 3, 27, 0, 0, 0}, 10800},
        {"EET-2EEST,M3.4.4/50,M10.4.4/50", {2027, 3, 26, 23, 59, 59}, 7200},
        {"IST-1GMT0,M10.5.0,M3.5.0/1", {2026, 12, 1, 0, 0, 0}, 0},
        // Daylight time all year.
        {"XXX3EDT4,0/0,J365/23", {2026, 1, 1, 3, 0, 0}, -14400},
        {"XXX3EDT4,0/0,J365/23", {2028, 12, 31, 23, 0, 0}, -14400},
        // What is no rule leaves the last offset.
        {"EST5EDT", {2026, 7, 1, 0, 0, 0}, 77},
        {"EST5EDT,M13.2.0,M11.1.0", {2026, 7, 1, 0, 0, 0}, 77},
        {"E5", {2026, 7, 1, 0, 0, 0}, 77}};
    for (const auto& [footer, utcReading, offset] : cases) {
        const TimeZone zone = TimeZone::fromTransitions("Own", 77, {}, footer);
        EXPECT_EQ(zone.offsetAt(TimeZone::utc().date(utcReading)), offset)
            << footer << " " << utcReading.hour;
    }
}

TEST(TimeZone, OwnTransitionsHoldUntilTheFooterTakesOver) {
    const std::int64_t change = secondsOf({.year = 2000, .month = 6});
    const TimeZone zone =
        TimeZone::fromTransitions("Own", 3600, {{change, 7200}}, "CET-1CEST,M3.5.0,M10.5.0/3");
    const auto offset = [&zone](std::int64_t seconds) {
        return zone.offsetAt(Date::since1970(static_cast<double>(seconds)));
    };
    EXPECT_EQ(offset(change - 1), 3600);
    EXPECT_EQ(offset(change), 7200);
    EXPECT_EQ(offset(secondsOf({.year = 1999, .month = 8})), 3600);
    EXPECT_EQ(offset(secondsOf({.year = 2000, .month = 12})), 3600);
    EXPECT_EQ(offset(secondsOf({.year = 2026, .month = 7})), 7200);
}

TEST(TimeZone, ZonesAreEqualByNameAndOffsets) {
    const auto zone = [](const char* name, int offset) {
        return TimeZone::fromTransitions(name, 0, {{.at = 1000, .offset = offset}});
    };
    EXPECT_EQ(zone("Office", 3600), zone("Office", 3600));
    EXPECT_NE(zone("Office", 3600), zone("Office", 7200));
    EXPECT_NE(zone("Office", 3600), zone("Home", 3600));
    EXPECT_NE(TimeZone::fixed(3600, "Europe/Berlin"), TimeZone::named("Europe/Berlin"));
}

TEST(TimeZone, ExtremeTransitionsDoNoHarm) {
    constexpr auto furthest = std::numeric_limits<std::int64_t>::max();
    for (const std::int64_t at : {-furthest - 1, -furthest, std::int64_t{-1} << 59, furthest}) {
        const TimeZone zone = TimeZone::fromTransitions("Own", 0, {{at, 3600}}, "CET-1CEST,M3.5.0,M10.5.0/3");
        const LocalTime summer{2026, 7, 1, 12, 0, 0};
        EXPECT_EQ(zone.localTime(zone.date(summer)), summer) << at;
        EXPECT_EQ(zone.offsetAt(zone.date(summer)), at < 0 ? 7200 : 0) << at;
        zone.localTime(Date(-1e300));
    }
}

TEST(TimeZone, NamesDoNotLeaveTheDirectory) {
    for (const char* name : {"", "/etc/localtime", "../zoneinfo/UTC", "Europe/../UTC", "Europe//Berlin", ".",
                             "Europe", "Europe/", "Nowhere/Land", "zone.tab"}) {
        EXPECT_FALSE(TimeZone::named(name)) << name;
    }
    EXPECT_FALSE(TimeZone::named(std::string("UTC\0x", 5)));
    EXPECT_TRUE(TimeZone::named("UTC", "/nonexistent"));
}

TEST(TimeZone, AWindowsNameIsAZoneOfTheSystemUnderItsOldOrNewName) {
    const std::filesystem::path system = "/usr/share/zoneinfo";
    const test::TemporaryDirectory onlyNewNames;
    std::filesystem::create_directory(onlyNewNames.path() / "Asia");
    std::filesystem::copy(system / "Asia/Kolkata", onlyNewNames.path() / "Asia/Kolkata");
    // 2026-07-01 00:00 UTC: hours of Almaty and Chihuahua, which left theirs, would differ.
    const Date summer = Date::since1970(1782864000);
    const std::tuple<const char*, std::filesystem::path, std::optional<double>> cases[] = {
        {"W. Europe Standard Time", system, 2},
        {"PACIFIC STANDARD TIME", system, -7},
        {"India Standard Time", system, 5.5},
        {"India Standard Time", onlyNewNames.path(), 5.5},
        {"Central Asia Standard Time", system, 6},
        {"Mountain Standard Time (Mexico)", system, -7},
        {"Kamchatka Standard Time", system, 12},
        {"UTC-11", system, -11},
        {"Tokyo Standard Time", onlyNewNames.path(), std::nullopt},
        {"Berlin", system, std::nullopt}};
    for (const auto& [name, directory, hours] : cases) {
        const auto zone = zoneOfWindowsName(name, directory);
        EXPECT_EQ(zone ? std::optional(zone->offsetAt(summer) / 3600.0) : std::nullopt, hours) << name;
    }
}

TEST(TimeZone, ADamagedFileGivesNoZone) {
    std::ifstream source("/usr/share/zoneinfo/Europe/Berlin", std::ios::binary);
    const std::string whole{std::istreambuf_iterator<char>(source), std::istreambuf_iterator<char>()};
    ASSERT_GT(whole.size(), 100u);
    const test::TemporaryDirectory directory;
    int number = 0;
    const auto zoneOf = [&](const std::string& bytes) {
        const std::string name = "Zone" + std::to_string(number++);
        directory.write(name, bytes);
        return TimeZone::named(name, directory.path());
    };
    EXPECT_TRUE(zoneOf(whole));
    for (std::size_t size = 0; size < whole.size(); size += 7) {
        EXPECT_FALSE(zoneOf(whole.substr(0, size))) << size;
    }
    // Nothing that a changed byte does may crash; most changes are still a zone.
    for (std::size_t at = 0; at < whole.size(); at += 5) {
        std::string changed = whole;
        changed[at] = static_cast<char>(0xff);
        if (const auto zone = zoneOf(changed)) zone->date({.year = 2026, .month = 3, .day = 29, .hour = 2});
    }
}

}  // namespace
}  // namespace platform
