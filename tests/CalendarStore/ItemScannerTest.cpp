#include "CalendarFixture.h"

#include <gmock/gmock.h>

#include <ItemLimits.h>
#include <ItemScanner.h>

#include <algorithm>

namespace {

using test::CalendarFixture;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Encodings, line ends and names of zones: tests/journeys/edge-cases.
TEST(ItemScanner, ANulCharacterIsLeftOutOfATitle) {
    CalendarFixture fixture;
    EXPECT_THAT(fixture.list(test::event("DTSTART:20260304T090000Z\nSUMMARY:" + std::string("nul\0l", 5)),
                             "2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z"),
                ElementsAre("2026-03-04 09:00Z 0m null"));
}

TEST(ItemScanner, BadItemsAreLeftOutAloneAndReported) {
    const std::pair<const char*, const char*> cases[] = {
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
        {"END:VTODO\n", "END without BEGIN left out"}};
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
         [](const auto& file) { return file.zones[0]->observances[0].rules.size(); }, limits::zoneRules}};
    for (const auto& one : cases) {
        for (const bool isAbove : {false, true}) {
            platform::CollectedDiagnostics diagnostics;
            platform::ZonePool zones;
            const auto file = platform::scanItems("a.ics", one.file(one.limit + isAbove), diagnostics, zones);
            EXPECT_EQ(one.kept(file), isAbove ? one.keptAbove : one.limit) << one.diagnostic << one.limit;
            const auto reported = diagnostics.all();
            const bool isReported = isAbove && *one.diagnostic;
            ASSERT_EQ(reported.size(), isReported ? 1 : 0)
                << one.diagnostic << (reported.empty() ? "" : reported[0].text);
            for (const auto& diagnostic : reported)
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

TEST(ZonePool, ADefinitionIsNotChangedByBrokenOnesAndByPartsOutsideOfIt) {
    const std::string lines = "DTSTART:20000101T000000\nTZOFFSETFROM:-0500\nTZOFFSETTO:-0500\n";
    const auto file = [&](const std::string& uid, const std::string& begin, const std::string& end) {
        return test::calendar("BEGIN:VTIMEZONE\nTZID:Office\n" + begin + lines + end + "END:VTIMEZONE\n" +
                              "BEGIN:STANDARD\nTZOFFSETTO:+0900\nEND:STANDARD\n" +
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

TEST(ZoneLookup, APathIsNotAZone) {
    CalendarFixture fixture;
    EXPECT_THAT(fixture.list(test::event("DTSTART;TZID=../../etc/passwd:20260304T100000"),
                             "2026-03-01T00:00:00Z", "2026-04-01T00:00:00Z"),
                ElementsAre("2026-03-04 09:00Z 0m T"));
}

}  // namespace
