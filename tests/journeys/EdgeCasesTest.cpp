#include "Journey.h"

#include <TimeAndText/Date.h>
#include <TimeAndText/TimeZone.h>
#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>
#include <tuple>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;

/// What edge-cases/expected.txt says of one calendar.
struct Case {
    std::string name;
    std::string zone;
    std::string from;
    std::string to;
    std::vector<std::string> occurrences;
    std::vector<std::string> reported;
};

std::vector<Case> readCases(const std::filesystem::path& file) {
    std::vector<Case> cases;
    std::istringstream lines(test::readFile(file));
    for (std::string line; std::getline(lines, line);) {
        const auto start = line.find_first_not_of(' ');
        if (start == std::string::npos || line[start] == '#') continue;
        if (start == 0) {
            std::istringstream words(line);
            Case& next = cases.emplace_back();
            words >> next.name >> next.zone >> next.from >> next.to;
        } else if (line[start] == '!') {
            cases.back().reported.push_back(line.substr(start + 2));
        } else {
            cases.back().occurrences.push_back(line.substr(start));
        }
    }
    return cases;
}

std::string reading(platform::Date date, const platform::TimeZone& zone, bool isDay) {
    const auto local = zone.localTime(date);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", local.year, local.month, local.day);
    std::string result = text;
    if (isDay) return result;
    std::snprintf(text, sizeof text, "T%02d:%02d", local.hour, local.minute);
    result += text;
    if (local.second != 0) {
        std::snprintf(text, sizeof text, ":%02d", local.second);
        result += text;
    }
    const int offset = zone.offsetAt(date);
    const int size = std::abs(offset);
    std::snprintf(text, sizeof text, "%c%02d:%02d", offset < 0 ? '-' : '+', size / 3600, size / 60 % 60);
    result += text;
    if (size % 60 != 0) {
        std::snprintf(text, sizeof text, ":%02d", size % 60);
        result += text;
    }
    return result;
}

/// As expected.txt writes it. An all-day event that does not begin with its day shows its times.
std::string describe(const platform::JsonValue& event, const platform::TimeZone& zone) {
    const auto start = *platform::parseRfc3339(*event.find("startDate")->asString());
    const auto end = *platform::parseRfc3339(*event.find("endDate")->asString());
    const auto beginsDay = [&](platform::Date date) {
        const auto local = zone.localTime(date);
        return zone.date({local.year, local.month, local.day, 0, 0, 0}) == date;
    };
    const bool isDay = *event.find("isAllDay")->asBool() && beginsDay(start) && beginsDay(end);
    std::string text = reading(start, zone, isDay) + "/" + reading(end, zone, isDay) + "  ";
    for (const char c : event.find("title") ? *event.find("title")->asString() : "-") {
        if (c == '\n') {
            text += "␤";
        } else {
            text += c;
        }
    }
    const auto& status = *event.find("status")->asString();
    if (status == "canceled") return text + " (cancelled)";
    return status == "none" ? text : text + " (" + status + ")";
}

std::string onLines(std::vector<std::string> lines) {
    std::sort(lines.begin(), lines.end());
    std::string text;
    for (const auto& line : lines)
        text += line + "\n";
    return text;
}

class EdgeCases : public Journey {
  protected:
    /// Adds the case to the folder. In a folder of its own each file is a calendar of its own, so that one
    /// process answers for many.
    void addCalendar(const Case& one, const std::string& folder) const {
        const auto source = std::filesystem::path(edgeCases()) / one.name;
        if (std::filesystem::is_directory(source)) {
            std::filesystem::create_directories(home / folder);
            std::filesystem::copy(source, home / (folder + "/" + one.name),
                                  std::filesystem::copy_options::recursive);
        } else {
            home.write(folder + "/" + one.name + "/a.ics", test::readFile(source.string() + ".ics"));
        }
    }

    /// The reasons of doctor's findings, by the folder below ~/calendars.
    std::map<std::string, std::vector<std::string>> findings() {
        std::map<std::string, std::vector<std::string>> found;
        const auto report = json(companion({"doctor", "--json", "--now", "2026-03-04T09:00:00Z"}));
        for (const auto& finding : *report.find("findings")->asArray()) {
            const auto file = std::filesystem::path(valueAt(finding, "file"));
            const auto folder = file.lexically_relative(home / "calendars").begin()->string();
            found[folder].push_back(valueAt(finding, "reason"));
        }
        return found;
    }

    const std::vector<Case> cases = readCases(std::filesystem::path(edgeCases()) / "expected.txt");
};

TEST_F(EdgeCases, EveryCalendarGivesExactlyItsOccurrences) {
    std::map<std::tuple<std::string, std::string, std::string>, std::vector<const Case*>> questions;
    for (const auto& one : cases)
        questions[{one.zone, one.from, one.to}].push_back(&one);
    int number = 0;
    for (const auto& [question, asked] : questions) {
        const auto& [zone, from, to] = question;
        const auto folder = "calendars-" + std::to_string(++number);
        variables["TZ"] = zone;
        variables["XDG_CONFIG_HOME"] = home / ("config-" + std::to_string(number));
        for (const auto* one : asked)
            addCalendar(*one, folder);
        ASSERT_EQ(companion({"setup", home / folder}).exitCode, 0) << folder;
        const auto outcome = companion({"events", "--from", from, "--to", to, "--json"});
        ASSERT_EQ(outcome.exitCode, 0) << outcome.err;
        const auto list = json(outcome);
        ASSERT_TRUE(list.asArray()) << outcome.out;
        std::map<std::string, std::vector<std::string>> answers;
        for (const auto& event : *list.asArray()) {
            answers[*event.find("calendarName")->asString()].push_back(
                describe(event, *platform::TimeZone::named(zone)));
        }
        for (const auto* one : asked) {
            EXPECT_EQ(onLines(answers[one->name]), onLines(one->occurrences))
                << one->name << ".ics, in " << zone;
        }
    }
    // expected.txt is beside them.
    const auto files = std::distance(std::filesystem::directory_iterator(edgeCases()), {});
    EXPECT_EQ(files, static_cast<std::ptrdiff_t>(cases.size()) + 1)
        << "calendars that nothing is expected of";
}

TEST_F(EdgeCases, WhatIsWrongIsReportedAndNothingElse) {
    for (const auto& one : cases)
        addCalendar(one, "calendars");
    ASSERT_EQ(companion({"setup", home / "calendars"}).exitCode, 0);
    auto found = findings();
    for (const auto& one : cases) {
        const auto& reasons = found[one.name];
        EXPECT_EQ(reasons.size(), one.reported.size()) << one.name << ": " << onLines(reasons);
        for (const auto& reported : one.reported)
            EXPECT_THAT(reasons, ::testing::Contains(HasSubstr(reported))) << one.name;
    }
}

std::string numbers(int first, int last) {
    std::string list;
    for (int number = first; number <= last; ++number)
        list += (number == first ? "" : ",") + std::to_string(number);
    return list;
}

std::string everySecondOfTheYears() {
    return "RRULE:FREQ=YEARLY;BYMONTHDAY=" + numbers(1, 31) + ";BYHOUR=" + numbers(0, 23) +
           ";BYMINUTE=" + numbers(0, 59) + ";BYSECOND=" + numbers(0, 59);
}

std::string repeated(std::string_view text, int times) {
    std::string result;
    for (int i = 0; i < times; ++i)
        result += text;
    return result;
}

/// A hundred thousand added dates, one a second.
std::string manyDates() {
    std::string lines;
    for (int second = 0; second < 100'000; ++second) {
        char text[32];
        std::snprintf(text, sizeof text, "202603%02dT%02d%02d%02dZ", 4 + second / 86400, second / 3600 % 24,
                      second / 60 % 60, second % 60);
        lines += (second % 60 == 0 ? "RDATE:" : ",") + std::string(text);
        if (second % 60 == 59 || second == 99'999) lines += "\r\n";
    }
    return lines;
}

TEST_F(EdgeCases, HostileCalendarsAreBoundedAndReportedAndTheRestIsShown) {
    const struct {
        std::string lines;
        std::string reason;
    } hostile[] = {
        {"RRULE:FREQ=SECONDLY\r\n", "too many occurrences"},
        {"RRULE:FREQ=SECONDLY;COUNT=1000000;BYMONTH=1,2,3,4\r\n", "too many occurrences"},
        {everySecondOfTheYears() + "\r\n", "too many occurrences"},
        {everySecondOfTheYears() + ";BYSETPOS=-1\r\n", ""},
        {manyDates(), "dates in RDATE and EXDATE"},
        {"RRULE:FREQ=DAILY\r\nEXRULE:FREQ=SECONDLY\r\n", "too many occurrences"},
        {"RRULE:FREQ=MONTHLY;BYMONTH=2;BYMONTHDAY=30\r\n", "yields no further occurrence"},
        {"RRULE:FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30\r\n", "yields no further occurrence"},
        {"DESCRIPTION:" + std::string(10'000'000, 'x') + "\r\n", "line longer than"},
        {"DESCRIPTION:" + repeated(std::string(70, 'x') + "\r\n ", 140'000) + "\r\n", "line longer than"},
        {repeated("BEGIN:X-DEEP\r\n", 200) + repeated("END:X-DEEP\r\n", 200), "nested too deep"},
        {repeated("nonsense\r\n", 200'000), "199900 more problems in this file"},
        {repeated("BEGIN:VEVENT\r\n", 200'000), "inside another one"}};
    int number = 0;
    for (const auto& [lines, reason] : hostile) {
        const auto name = "calendars/" + std::to_string(++number) + "/a.ics";
        auto good = test::oneEvent("Good", "20260304T100000Z", "20260304T110000Z");
        good.erase(good.find("END:VCALENDAR"));
        auto bad = test::oneEvent("Bad", "20200101T000000Z", "", lines);
        home.write(name, good + bad.substr(bad.find("BEGIN:VEVENT")));
    }
    ASSERT_EQ(companion({"setup", home / "calendars"}).exitCode, 0);
    const auto titles =
        valuesAt(ask("events --from 2026-03-04T10:30:00Z --to 2026-03-04T10:31:00Z"), "title");
    EXPECT_EQ(std::ranges::count(titles, "Good"), number);

    auto found = findings();
    number = 0;
    for (const auto& [lines, reason] : hostile) {
        const auto& reasons = found[std::to_string(++number)];
        EXPECT_LE(reasons.size(), 103u) << lines.substr(0, 60);
        if (!reason.empty()) {
            EXPECT_THAT(reasons, ::testing::Contains(HasSubstr(reason))) << lines.substr(0, 60);
        }
    }
}

}  // namespace
