#include "CalendarFixture.h"

#include <gmock/gmock.h>

namespace {

using namespace platform;
using test::CalendarFixture;
using testing::ElementsAre;

EKEventRef read(CalendarFixture& fixture, const std::string& lines) {
    fixture.write("a.ics",
                  test::calendar(test::event("DTSTART:20260304T090000Z\nDTEND:20260304T100000Z\n" + lines)));
    fixture.restart();
    return fixture.events("2026-03-04T00:00:00Z", "2026-03-05T00:00:00Z").at(0);
}

TEST(ItemDetails, TheAddressToJoinByComesFirst) {
    CalendarFixture fixture;
    const std::string url = "URL:https://example.org/page\n";
    const std::string google = "X-GOOGLE-CONFERENCE:https://meet.google.com/abc-defg-hij\n";
    EXPECT_EQ(read(fixture, url)->url, "https://example.org/page");
    EXPECT_EQ(read(fixture, url + google)->url, "https://meet.google.com/abc-defg-hij");
    EXPECT_EQ(
        read(fixture, url + "X-MICROSOFT-SKYPETEAMSMEETINGURL:https://teams.microsoft.com/l/meetup-join/1")
            ->url,
        "https://teams.microsoft.com/l/meetup-join/1");
    EXPECT_EQ(
        read(fixture,
             url + google +
                 "CONFERENCE;VALUE=URI:tel:+123\n"
                 "CONFERENCE;VALUE=URI;FEATURE=AUDIO,VIDEO;LABEL=\"a, b\":https://video.example/1?a=b;c")
            ->url,
        "https://video.example/1?a=b;c");
    EXPECT_EQ(read(fixture, "CONFERENCE;VALUE=URI:tel:+123")->url, std::nullopt);
}

TEST(ItemDetails, Participants) {
    CalendarFixture fixture;
    const auto event =
        read(fixture,
             "ORGANIZER;CN=Ada:MAILTO:Ada@example.org\n"
             "ATTENDEE;CN=\"Lovelace, Ada\";ROLE=OPT-PARTICIPANT;PARTSTAT=TENTATIVE:mailto:ada@EXAMPLE.org\n"
             "ATTENDEE;PARTSTAT=ACCEPTED:mailto:me@example.ORG\n"
             "ATTENDEE;ROLE=CHAIR;PARTSTAT=X-MAYBE;CN=It^'s:urn:uuid:1\n"
             "ATTENDEE;PARTSTAT=IN-PROCESS;EMAIL=bob@example.org:/principals/bob/");
    ASSERT_TRUE(event->organizer && event->attendees);
    EXPECT_EQ(event->organizer->url, "mailto:Ada@example.org");
    EXPECT_EQ(event->organizer->participantRole, EKParticipantRole::chair);
    EXPECT_EQ(event->organizer->participantStatus, EKParticipantStatus::tentative);
    const auto& attendees = *event->attendees;
    ASSERT_EQ(attendees.size(), 4u);
    EXPECT_EQ(attendees[0].name, "Lovelace, Ada");
    EXPECT_EQ(attendees[0].participantRole, EKParticipantRole::optional);
    EXPECT_FALSE(attendees[0].isCurrentUser);
    EXPECT_TRUE(attendees[1].isCurrentUser);
    EXPECT_EQ(attendees[1].participantRole, EKParticipantRole::required);
    EXPECT_EQ(attendees[2].participantRole, EKParticipantRole::chair);
    EXPECT_EQ(attendees[2].participantStatus, EKParticipantStatus::unknown);
    EXPECT_EQ(attendees[2].name, "It\"s");
    EXPECT_EQ(attendees[3].participantStatus, EKParticipantStatus::inProcess);
    EXPECT_EQ(attendees[3].resourceSpecifier(), std::nullopt);
    EXPECT_THAT(attendees[3].description(), testing::HasSubstr("; email = bob@example.org;"));
    EXPECT_THAT(attendees[0].description(),
                testing::HasSubstr("; name = Lovelace, Ada; email = ada@EXAMPLE.org;"));
    EXPECT_EQ(read(fixture, "ATTENDEE:mailto:x@y.z")->attendees->front().participantStatus,
              EKParticipantStatus::pending);
    EXPECT_EQ(read(fixture, "ORGANIZER:mailto:x@y.z")->organizer->participantStatus,
              EKParticipantStatus::unknown);
    EXPECT_FALSE(read(fixture, "ORGANIZER:mailto:x@y.z")->attendees);
}

TEST(ItemDetails, AlarmsTravelTimeAndStatus) {
    CalendarFixture fixture;
    const auto alarm = [](const char* lines) {
        return std::string("BEGIN:VALARM\n") + lines + "\nEND:VALARM\n";
    };
    const auto event = read(fixture, alarm("ACTION:DISPLAY\nTRIGGER:-PT15M") +
                                         alarm("ACTION:AUDIO\nTRIGGER;RELATED=END:-PT5M") +
                                         alarm("ACTION:DISPLAY\nTRIGGER;VALUE=DATE-TIME:20260304T080000Z") +
                                         alarm("ACTION:NONE\nTRIGGER:-PT1M") +
                                         "X-APPLE-TRAVEL-DURATION;VALUE=DURATION:PT30M\nSTATUS:TENTATIVE\n");
    ASSERT_TRUE(event->alarms);
    EXPECT_THAT(*event->alarms, ElementsAre(EKAlarm{{}, -900}, EKAlarm{{}, 3300},
                                            EKAlarm{test::at("2026-03-04T08:00:00Z"), 0}));
    EXPECT_EQ(event->travelTime, 1800.0);
    EXPECT_EQ(event->value("travelTime"), EKPropertyValue(1800.0));
    EXPECT_EQ(event->status, EKEventStatus::tentative);
    EXPECT_FALSE(read(fixture, "")->alarms);
    EXPECT_FALSE(read(fixture, alarm("ACTION:NONE\nTRIGGER:-PT1M"))->alarms);
    EXPECT_EQ(read(fixture, "")->value("travelTime"), EKPropertyValue());
}

TEST(ItemDetails, LinesAgainstTheStandardKeepWhatTheySay) {
    CalendarFixture fixture;
    EXPECT_EQ(read(fixture, "DESCRIPTION:C:\\Users\\, a\\:b \\")->notes, "C:\\Users, a:b \\");
    EXPECT_EQ(read(fixture, "ATTENDEE;CN=\"Ada:mailto:a@b.c")->attendees->front().url, "mailto:a@b.c");
    EXPECT_EQ(read(fixture, "X-GOOGLE-CONFERENCE:https://a.example/1,2\\,3")->url, "https://a.example/1,2,3");
    EXPECT_THAT(*read(fixture, "BEGIN:VALARM\nTRIGGER:20260304T080000Z\nEND:VALARM")->alarms,
                ElementsAre(EKAlarm{test::at("2026-03-04T08:00:00Z"), 0}));
}

std::string task(const std::string& lines) {
    return "BEGIN:VTODO\nUID:t\n" + lines + "\nEND:VTODO\n";
}

TEST(Tasks, DueMomentsAndAlarms) {
    const std::tuple<const char*, const char*, bool, bool> cases[] = {
        {"DUE:20260304T120000Z", "2026-03-04T12:00:00Z", true, true},
        // 02:30 comes twice there.
        {"DUE:20261025T003000Z", "2026-10-25T00:30:00Z", true, true},
        {"DUE:20261025T013000Z", "2026-10-25T01:30:00Z", true, true},
        {"DTSTART:20261024T080000Z\nDUE:20261025T013000Z", "2026-10-25T01:30:00Z", true, true},
        {"DUE;TZID=America/New_York:20260304T070000", "2026-03-04T12:00:00Z", true, true},
        {"DTSTART:20260304T090000Z\nDURATION:PT3H", "2026-03-04T12:00:00Z", true, true},
        {"DUE;VALUE=DATE:20260305", "2026-03-04T23:00:00Z", false, false},
        {"DUE;VALUE=DATE:20260305\nBEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT1H\nEND:VALARM",
         "2026-03-04T23:00:00Z", false, true},
        {"DTSTART;VALUE=DATE:20260304\nDUE;VALUE=DATE:20260305", "2026-03-04T23:00:00Z", false, false},
        // The next open one, whatever was left undone before.
        {"DTSTART:20260101T120000Z\nDUE:20260101T120000Z\nRRULE:FREQ=DAILY", "2026-03-04T12:00:00Z", true,
         true},
        {"DUE:20260303T120000Z\nRRULE:FREQ=DAILY", "2026-03-04T12:00:00Z", true, true}};
    for (const auto& [lines, due, hasHour, hasAlarms] : cases) {
        CalendarFixture fixture;
        fixture.write("a.ics", test::calendar(task(lines)));
        const auto found = fixture.tasks("2026-03-04T00:00:00Z", "2026-10-26T00:00:00Z");
        ASSERT_EQ(found.size(), 1u) << lines;
        EXPECT_EQ(found[0]->dueDate, test::at(due)) << lines;
        EXPECT_EQ(fixture.environment->calendar.date(*found[0]->dueDateComponents), test::at(due)) << lines;
        EXPECT_EQ(found[0]->dueDateComponents->hour.has_value(), hasHour) << lines;
        EXPECT_EQ(found[0]->alarms.has_value(), hasAlarms) << lines;
    }
}

TEST(Tasks, DoneOnesAndThoseWithoutDueAreNotOpen) {
    for (const auto* lines :
         {"DUE:20260304T120000Z\nSTATUS:COMPLETED", "DUE:20260304T120000Z\nCOMPLETED:20260301T000000Z",
          "DUE:20260304T120000Z\nPERCENT-COMPLETE:100", "DTSTART:20260304T120000Z", "SUMMARY:some day"}) {
        CalendarFixture fixture;
        fixture.write("a.ics", test::calendar(task(lines)));
        EXPECT_TRUE(fixture.tasks("2026-03-04T00:00:00Z", "2026-03-06T00:00:00Z").empty()) << lines;
        EXPECT_EQ(fixture.store().calendars(EKEntityType::reminder).size(), 1u);
        EXPECT_TRUE(fixture.store().calendars(EKEntityType::event).empty());
    }
}

TEST(Tasks, ADoneOccurrenceGivesWayToTheNext) {
    CalendarFixture fixture;
    fixture.write("a.ics",
                  test::calendar(task("DTSTART:20260301T120000Z\nDUE:20260301T120000Z\nRRULE:FREQ=DAILY") +
                                 task("RECURRENCE-ID:20260304T120000Z\nDTSTART:20260304T120000Z\n"
                                      "DUE:20260304T120000Z\nSTATUS:COMPLETED")));
    const auto found = fixture.tasks("2026-03-04T00:00:00Z", "2026-03-06T00:00:00Z");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0]->dueDate, test::at("2026-03-05T12:00:00Z"));
    EXPECT_EQ(fixture.store().reminderWithIdentifier(found[0]->calendarItemIdentifier)->dueDate,
              found[0]->dueDate);
    EXPECT_FALSE(fixture.store().eventWithIdentifier(found[0]->calendarItemIdentifier));
}

}  // namespace
