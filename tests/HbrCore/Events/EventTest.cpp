#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/EventJson.h>
#include <HbrCore/Events/Reminder.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using test::at;

constexpr const char* zoom = "https://zoom.us/j/123456789";
constexpr const char* meet = "https://meet.google.com/abc-defg-hij";

std::vector<std::string> addresses(const Event& event) {
    std::vector<std::string> list;
    for (const auto& link : event.videoConferenceLinks)
        list.push_back(link.url.absoluteString());
    return list;
}

TEST(Event, LinksOfAnEventAreListedOnceInTheOrderNotesLocationUrl) {
    test::TestEnvironment environment;
    const VideoConferenceLinkParser parser(environment);
    platform::EKEvent item;
    item.title = "https://whereby.com/not-looked-at";
    item.notes = std::string("Call: ") + zoom;
    item.location = std::string(meet) + " or " + zoom;
    item.url = meet;
    EXPECT_THAT(addresses(Event::fromCalendarEvent(item, parser)), testing::ElementsAre(zoom, meet));

    const Reminder reminder("r", at("2026-03-04T10:00:00Z"), std::string("See ") + zoom, zoom, 0);
    EXPECT_THAT(addresses(Event::fromReminder(reminder, parser)), testing::ElementsAre(zoom, zoom));
}

TEST(Event, ParticipantsAreTheOrganizerThenAllAttendees) {
    test::TestEnvironment environment;
    platform::EKParticipant organizer;
    organizer.url = "mailto:ada@example.org";
    organizer.participantRole = platform::EKParticipantRole::required;
    platform::EKParticipant chair;
    chair.url = "urn:uuid:1";
    chair.participantRole = platform::EKParticipantRole::chair;
    chair.participantStatus = platform::EKParticipantStatus::delegated;
    platform::EKEvent item;
    item.organizer = organizer;
    item.attendees = {organizer, chair};

    const auto people =
        Event::fromCalendarEvent(item, VideoConferenceLinkParser(environment)).participantsData;
    ASSERT_EQ(people.size(), 3u);
    EXPECT_EQ(people[0], people[1]);
    EXPECT_EQ(people[0].email, "ada@example.org");
    EXPECT_FALSE(people[0].isOrganizer);
    EXPECT_TRUE(people[2].isOrganizer);
    EXPECT_EQ(people[2].status, ParticipantStatus::unknown);
}

TEST(Event, ATaskWithoutAUsableDueDateMakesNoEvent) {
    const platform::Calendar calendar(platform::TimeZone::named("Europe/Berlin").value());
    platform::EKReminder task;
    EXPECT_FALSE(Event::fromAppleReminder(task, calendar));
    task.dueDateComponents = platform::DateComponents{};
    EXPECT_FALSE(Event::fromAppleReminder(task, calendar));
    task.dueDateComponents->year = 2026;
    task.dueDateComponents->month = 3;
    task.dueDateComponents->day = 4;
    const auto event = Event::fromAppleReminder(task, calendar);
    ASSERT_TRUE(event);
    EXPECT_EQ(event->startDate, at("2026-03-03T23:00:00Z"));
    EXPECT_EQ(event->endDate, event->startDate);
}

TEST(Event, TextsForDebuggingAndForPrograms) {
    Event event;
    event.id = "e";
    event.startDate = at("2026-03-04T10:00:00Z");
    event.endDate = at("2026-03-04T11:00:00Z");
    event.color = platform::Color::hex(0x336699);
    EXPECT_EQ(event.debugDescription(),
              "start: 2026-03-04 10:00:00 +0000, end: 2026-03-04 11:00:00 +0000, title: (none), location: "
              "(none), recurring: false");
    EXPECT_EQ(platform::writeJson(eventJson(event)),
              R"({"id":"e","type":"calendarEvent","startDate":"2026-03-04T10:00:00.000Z",)"
              R"("endDate":"2026-03-04T11:00:00.000Z","isRecurring":false,"color":"#336699",)"
              R"("videoConferenceLinks":[],"travelTime":0.0,"participantsData":[]})");
}

}  // namespace
