#include "CalendarFixture.h"

#include <gmock/gmock.h>

#include <ItemLimits.h>
#include <ItemScanner.h>

#include <algorithm>
#include <functional>

namespace {

using test::CalendarFixture;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::string titleOf(const std::string& bytes) {
    CalendarFixture fixture;
    fixture.write("a.ics", bytes);
    const auto found = fixture.events("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z");
    return found.size() == 1 ? found[0]->title.value_or("-") : std::to_string(found.size()) + " events";
}

std::string withTitle(const std::string& title) {
    return test::calendar(test::event("DTSTART:20260304T090000Z\nSUMMARY:" + title));
}

std::string utf16(const std::string& ascii, bool bigEndian, bool mark) {
    std::string out = mark ? (bigEndian ? "\xFE\xFF" : "\xFF\xFE") : "";
    for (const char c : ascii)
        out += bigEndian ? std::string{'\0', c} : std::string{c, '\0'};
    return out;
}

TEST(ItemScanner, ReadsTextsAsTheyWereWritten) {
    EXPECT_EQ(titleOf(withTitle("Caf\xC3\xA9")), "Caf\xC3\xA9");
    EXPECT_EQ(titleOf("\xEF\xBB\xBF" + withTitle("Caf\xC3\xA9")), "Caf\xC3\xA9");
    EXPECT_EQ(titleOf(withTitle("Caf\xE9 \x96 \x80")), "Caf\xC3\xA9 \xE2\x80\x93 \xE2\x82\xAC") << "Latin-1";
    EXPECT_EQ(titleOf(withTitle("Caf\xC3\n \xA9 \r\n\tbar")), "Caf\xC3\xA9 bar")
        << "folded inside a character";
    EXPECT_EQ(titleOf(utf16(withTitle("Wide"), false, true)), "Wide");
    EXPECT_EQ(titleOf(utf16(withTitle("Wide"), true, true)), "Wide");
    EXPECT_EQ(titleOf(utf16(withTitle("Wide"), false, false)), "Wide");
    EXPECT_EQ(titleOf(withTitle(std::string("nul\0l", 5))), "null");
    EXPECT_EQ(titleOf(withTitle("a\\, b\\; c\\\\ \\nd")), "a, b; c\\ \nd");
    auto oldLineEnds = withTitle("Old");
    for (auto at = oldLineEnds.find("\r\n"); at != std::string::npos; at = oldLineEnds.find("\r\n")) {
        oldLineEnds.replace(at, 2, "\r");
    }
    std::replace(oldLineEnds.begin(), oldLineEnds.end(), '\n', '\r');
    EXPECT_EQ(titleOf(oldLineEnds), "Old");
}

TEST(ItemScanner, SeveralCalendarsInOneFile) {
    CalendarFixture fixture;
    fixture.write("a.ics",
                  test::calendar("METHOD:CANCEL\n" + test::event("UID:1\nDTSTART:20260304T090000Z")) +
                      test::calendar(test::event("UID:2\nDTSTART:20260304T100000Z")));
    EXPECT_THAT(fixture.list("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z"),
                ElementsAre("2026-03-04 09:00Z 0m T!", "2026-03-04 10:00Z 0m T"));
}

TEST(ItemScanner, BadItemsAreLeftOutAloneAndTold) {
    struct Case {
        const char* bad;
        const char* diagnostic;
    };
    const Case cases[] = {
        {"BEGIN:VEVENT\nUID:x\nSUMMARY:no start\nEND:VEVENT\n", "a.ics:3 event without DTSTART; left out"},
        {"BEGIN:VEVENT\nUID:x\nDTSTART:20260230T090000Z\nEND:VEVENT\n",
         "a.ics:3 event with a wrong time \"20260230T090000Z\" in DTSTART; left out"},
        {"BEGIN:VEVENT\nDTSTART:20260301T250000Z\nEND:VEVENT\n", "wrong time \"20260301T250000Z\""},
        {"BEGIN:VEVENT\nDTSTART:20250304T090000Z\nDTEND:tomorrow\nEND:VEVENT\n",
         "a.ics:5 wrong time \"tomorrow\" in DTEND left out"},
        {"BEGIN:VEVENT\nDTSTART:20250304T090000Z\nthis is no property\nEND:VEVENT\n",
         "a.ics:5 line without a property left out"},
        {"BEGIN:VEVENT\nDTSTART:20250304T090000Z\nDTSTART;TZID=Nowhere:20250304T090000\nEND:VEVENT\n",
         "a.ics:3 unknown time zone \"Nowhere\""},
        {"BEGIN:VEVENT\nDTSTART:20250304T090000Z\nBEGIN:VALARM\nEND:VEVENT\n", "component is not closed"},
        {"END:VTODO\n", "END without BEGIN left out"},
    };
    for (const auto& [bad, diagnostic] : cases) {
        CalendarFixture fixture;
        fixture.write("a.ics", test::calendar(bad + test::event("DTSTART:20260304T090000Z")));
        EXPECT_THAT(fixture.list("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z"),
                    ElementsAre("2026-03-04 09:00Z 0m T"))
            << bad;
        EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr(diagnostic))) << bad;
    }
}

TEST(ItemScanner, HostileFilesShowWhatTheyHave) {
    std::string nested;
    for (int i = 0; i < 200; ++i)
        nested += "BEGIN:X-DEEP\n";
    for (int i = 0; i < 200; ++i)
        nested += "END:X-DEEP\n";
    const auto good = test::event("DTSTART:20260304T090000Z");
    const auto longLine = "DESCRIPTION:" + std::string(10'000'000, 'x');
    for (const auto& [text, diagnostic] : std::vector<std::pair<std::string, std::string>>{
             {test::calendar(nested + good), "nested too deep"},
             {test::calendar(test::event("DTSTART:20260304T090000Z\n" + longLine)),
              "line longer than 1024 KB"},
             {"BEGIN:VCALENDAR\n" + good, "the file ends inside a component"},
             {"BEGIN:VCALENDAR\nBEGIN:VEVENT\nSUMMARY:T\nDTSTART:20260304T090000Z",
              "the file ends inside"}}) {
        CalendarFixture fixture;
        fixture.write("a.ics", text);
        EXPECT_THAT(fixture.list("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z"),
                    ElementsAre("2026-03-04 09:00Z 0m T"))
            << diagnostic;
        EXPECT_THAT(fixture.diagnostics(), Contains(HasSubstr(diagnostic)));
    }
    for (const auto* text : {"", "hello", "\xFF\xFE", "BEGIN:VCALENDAR\nEND:VCALENDAR\nEND:VCALENDAR\n"}) {
        CalendarFixture fixture;
        fixture.write("a.ics", text);
        EXPECT_THAT(fixture.list("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z"), IsEmpty());
        EXPECT_THAT(fixture.diagnostics(), testing::Not(IsEmpty())) << text;
    }
}

std::string repeated(std::size_t count, std::string_view text) {
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

/// Every bound of ItemLimits.h: reached, and exceeded by one.
TEST(ItemScanner, WhatNoRealFileHoldsIsLeftOutWithADiagnostic) {
    struct Case {
        const char* diagnostic;
        std::size_t limit;
        std::function<std::string(std::size_t)> file;
        /// Times that the marks appear in what was scanned, below and above the limit.
        std::function<std::size_t(const platform::ScannedFile&)> kept;
        std::size_t keptAbove;
    };
    const auto inEvent = [](const std::string& lines) {
        return test::calendar(test::event("DTSTART:20260304T090000Z\n" + lines));
    };
    const auto exclusions = [](const auto& file) { return file.items[0].recurrence->exclusions.size(); };
    const auto rules = [](const auto& file) { return file.items[0].recurrence->rules.size(); };
    const auto lengthOfText = [](const auto& file) { return file.items[0].text.size(); };
    const auto tzid = [](const auto& file) { return file.items[0].start->tzid->size(); };
    const auto hasName = [](const auto& file) {
        return static_cast<std::size_t>(file.items[0].text.find("CN=") != std::string::npos);
    };
    const auto emptyText = std::string_view("BEGIN:VEVENT\r\nSUMMARY:T\r\nEND:VEVENT\r\n").size();
    namespace limits = platform::limits;
    const Case cases[] = {
        {"more than 200,000 events and tasks; the file is not used", limits::items,
         [](auto n) {
             return test::calendar(repeated(n, "BEGIN:VEVENT\nDTSTART:20260304T090000Z\nEND:VEVENT\n"));
         },
         [](const auto& file) { return file.items.size(); }, 0},
        {"more text than an item may have", limits::lines,
         [&](auto n) { return inEvent(repeated(n - 1, "URL:x\n")); },
         [&](const auto& file) { return (lengthOfText(file) - emptyText) / 7 + 1; }, limits::lines},
        {"more text than an item may have", limits::textBytes,
         [&](auto n) {
             const auto line = "URL:" + std::string((std::size_t{1} << 20) - 6, 'x') + "\n";
             const auto rest = n - emptyText + 12 - 3 * ((std::size_t{1} << 20));
             return inEvent(repeated(3, line) + "URL:" + std::string(rest - 4, 'x'));
         },
         [&](const auto& file) { return lengthOfText(file) - 14; },
         3 * (std::size_t{1} << 20) + emptyText - 14},
        {"dates in RDATE and EXDATE; the rest of EXDATE is left out", limits::dates,
         [&](auto n) { return inEvent("EXDATE:" + repeated(n - 1, "20260304,") + "20260304"); }, exclusions,
         limits::dates},
        {"more than 50 rules; the rest is left out", limits::rules,
         [&](auto n) { return inEvent(repeated(n, "RRULE:FREQ=DAILY\n")); }, rules, limits::rules},
        {"rule longer than 4,096 bytes left out", limits::ruleBytes,
         [&](auto n) { return inEvent("RRULE:" + std::string(n, 'x')); },
         [](const auto& file) {
             const auto& recurrence = file.items[0].recurrence;
             return recurrence && !recurrence->rules.empty() ? recurrence->rules[0].size() : 0;
         },
         0},
        {"", limits::zoneNameBytes,
         [](auto n) {
             return test::calendar(test::event("DTSTART;TZID=" + std::string(n, 'x') + ":20260304T090000"));
         },
         tzid, limits::zoneNameBytes + std::string_view("…").size()},
        {"CN longer than 1,024 bytes left out", limits::parameterBytes,
         [&](auto n) { return inEvent("ATTENDEE;CN=" + std::string(n, 'x') + ":mailto:a@example.org"); },
         [&](const auto& file) { return hasName(file) * limits::parameterBytes; }, 0},
        {"rules of time zones; the rest is left out", limits::zoneRules,
         [](auto n) {
             return test::calendar("BEGIN:VTIMEZONE\nTZID:X\nBEGIN:STANDARD\n" + repeated(n, "RRULE:x\n") +
                                   "END:STANDARD\nEND:VTIMEZONE\n");
         },
         [](const auto& file) { return file.zones[0]->observances[0].rules.size(); }, limits::zoneRules},
    };
    for (const auto& one : cases) {
        for (const bool isAbove : {false, true}) {
            platform::CollectedDiagnostics diagnostics;
            platform::ZonePool zones;
            const auto file = platform::scanItems("a.ics", one.file(one.limit + isAbove), diagnostics, zones);
            EXPECT_EQ(one.kept(file), isAbove ? one.keptAbove : one.limit) << one.diagnostic << one.limit;
            const auto told = diagnostics.all();
            const bool isTold = isAbove && *one.diagnostic;
            ASSERT_EQ(told.size(), isTold ? 1 : 0) << one.diagnostic << (told.empty() ? "" : told[0].text);
            for (const auto& diagnostic : told)
                EXPECT_THAT(diagnostic.text, HasSubstr(one.diagnostic));
        }
    }
}

TEST(ItemScanner, OfManyParametersThoseOfTheRecordStay) {
    CalendarFixture fixture;
    fixture.write("a.ics",
                  test::calendar(test::event(
                      "DTSTART:20260304T090000Z\nATTENDEE;" + repeated(100'000, "A=B;") +
                      "CN=\"Harper; John\";PARTSTAT=DECLINED:mailto:me@example.org\n" +
                      "DESCRIPTION;ALTREP=\"data:text/html," + std::string(5000, 'x') + "\":Notes")));
    const auto found = fixture.events("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z");
    ASSERT_EQ(found.size(), 1u);
    ASSERT_TRUE(found[0]->attendees);
    EXPECT_EQ(found[0]->attendees->front().name, "Harper; John");
    EXPECT_EQ(found[0]->attendees->front().participantStatus, platform::EKParticipantStatus::declined);
    EXPECT_EQ(found[0]->notes, "Notes");
}

TEST(ZonePool, ADefinitionWithAMissingPartDoesNotStandForAnIntactOne) {
    const std::string lines = "DTSTART:20000101T000000\nTZOFFSETFROM:-0500\nTZOFFSETTO:-0500\n";
    const auto file = [&](const std::string& uid, const std::string& begin, const std::string& end) {
        return test::calendar("BEGIN:VTIMEZONE\nTZID:Office\n" + begin + lines + end + "END:VTIMEZONE\n" +
                              test::event("UID:" + uid + "\nDTSTART;TZID=Office:20260304T100000"));
    };
    for (const auto& [broken, intact] : {std::pair("a.ics", "b.ics"), std::pair("b.ics", "a.ics")}) {
        CalendarFixture fixture;
        fixture.write(broken, file("broken", "", ""));
        fixture.write(intact, file("intact", "BEGIN:STANDARD\n", "END:STANDARD\n"));
        EXPECT_THAT(fixture.list("2026-03-04T15:00:00Z", "2026-03-04T15:00:00Z"),
                    ElementsAre("2026-03-04 15:00Z 0m T"));
    }
}

TEST(ZoneLookup, FindsZonesUnderManyNames) {
    const std::string own =
        "BEGIN:VTIMEZONE\nTZID:Own\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
        "TZOFFSETFROM:+0500\nTZOFFSETTO:+0500\nEND:STANDARD\nEND:VTIMEZONE\n";
    const std::string rules =
        "BEGIN:VTIMEZONE\nTZID:(UTC+01:00) Amsterdam\n"
        "BEGIN:STANDARD\nDTSTART:16010101T030000\nTZOFFSETFROM:+0200\nTZOFFSETTO:+0100\n"
        "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10\nEND:STANDARD\n"
        "BEGIN:DAYLIGHT\nDTSTART:16010101T020000\nTZOFFSETFROM:+0100\nTZOFFSETTO:+0200\n"
        "RRULE:FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3\nEND:DAYLIGHT\nEND:VTIMEZONE\n";
    const std::string wrongBerlin =
        "BEGIN:VTIMEZONE\nTZID:Europe/Berlin\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
        "TZOFFSETFROM:+0900\nTZOFFSETTO:+0900\nEND:STANDARD\nEND:VTIMEZONE\n";
    struct Case {
        std::string zones;
        const char* start;
        const char* expected;
    };
    const Case cases[] = {
        {"", "DTSTART;TZID=America/New_York:20260304T040000", "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=\"America/New_York\":20260304T040000", "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=Eastern Standard Time:20260304T040000", "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=/freeassociation.sourceforge.net/America/New_York:20260304T040000",
         "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=/softwarestudio.org/Olson_20011030_5/America/New_York:20260304T040000",
         "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=/example.org/America/Argentina/Ushuaia:20260304T060000", "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=UTC:20260304T090000", "2026-03-04 09:00Z 0m T"},
        {own, "DTSTART;TZID=Own:20260304T140000", "2026-03-04 09:00Z 0m T"},
        {own, "DTSTART;TZID=\"Own\":20260304T140000", "2026-03-04 09:00Z 0m T"},
        {rules, "DTSTART;TZID=\"(UTC+01:00) Amsterdam\":20260304T100000", "2026-03-04 09:00Z 0m T"},
        {rules, "DTSTART;TZID=\"(UTC+01:00) Amsterdam\":20260330T100000", "2026-03-30 08:00Z 0m T"},
        {wrongBerlin, "DTSTART;TZID=Europe/Berlin:20260304T100000", "2026-03-04 09:00Z 0m T"},
        {"", "DTSTART;TZID=../../etc/passwd:20260304T100000", "2026-03-04 09:00Z 0m T"},
    };
    for (const auto& [zones, start, expected] : cases) {
        for (const bool zonesFirst : {true, false}) {
            CalendarFixture fixture;
            const auto item = test::event(start);
            EXPECT_EQ(fixture.list(zonesFirst ? zones + item : item + zones, "2026-03-01T00:00:00Z",
                                   "2026-04-01T00:00:00Z"),
                      std::vector<std::string>{expected})
                << start;
        }
    }
}

}  // namespace
