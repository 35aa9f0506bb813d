#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>
#include <HbrCore/Events/EventTexts.h>
#include <support/TextEnvironment.h>

#include <gmock/gmock.h>

namespace {

using namespace hbr;
using test::at;
using test::shown;
using test::TextEnvironment;

constexpr const char* now = "2026-03-04T09:30:00+01:00";

Event eventFrom(std::string_view start, std::string_view end) {
    Event event;
    event.startDate = at(start);
    event.endDate = at(end);
    return event;
}

/// Visible marks in place of the spaces around the dash and of the isolates.
std::string readable(std::string text) {
    for (const auto& [hidden, mark] : std::vector<std::pair<std::string, std::string>>{
             {"\u2006\u2013\u2006", " - "}, {"\u2068", "<"}, {"\u2069", ">"}}) {
        for (std::size_t found; (found = text.find(hidden)) != std::string::npos;)
            text.replace(found, hidden.size(), mark);
    }
    return shown(std::move(text));
}

TEST(EventTexts, ATimeSpanNamesTheDaysThatAreNotClear) {
    const TextEnvironment world(now);
    for (const auto& [start, end, expected] : std::vector<std::tuple<const char*, const char*, const char*>>{
             {"2026-03-04T10:00:00+01:00", "2026-03-04T11:00:00+01:00", "10:00_AM - 11:00_AM"},
             {"2026-03-04T09:00:00+01:00", "2026-03-04T09:30:00+01:00", "until 9:30_AM"},
             {"2026-03-03T22:00:00+01:00", "2026-03-04T23:59:00+01:00", "until 11:59_PM"},
             {"2026-03-04T09:30:00+01:00", "2026-03-05T00:00:00+01:00", "until tomorrow, 12:00_AM"},
             {"2026-03-04T23:00:00+01:00", "2026-03-05T01:00:00+01:00",
              "today, 11:00_PM - tomorrow, 1:00_AM"},
             {"2026-03-05T10:00:00+01:00", "2026-03-05T11:00:00+01:00", "tomorrow, 10:00_AM - 11:00_AM"},
             {"2026-03-20T10:00:00+01:00", "2026-03-20T11:00:00+01:00", "Mar 20, 2026, 10:00_AM - 11:00_AM"},
             {"2026-03-04T08:00:00+01:00", "2026-03-04T09:29:59+01:00", "8:00_AM - 9:29_AM"}}) {
        EXPECT_EQ(readable(formattedTimeAndDate(eventFrom(start, end), world.formatters, at(now))), expected);
    }
    const auto event = eventFrom("2026-03-05T10:00:00+01:00", "2026-03-05T11:00:00+01:00");
    EXPECT_EQ(readable(formattedTime(event, world.formatters)), "10:00_AM - 11:00_AM");
    EXPECT_EQ(readable(formattedStartTimeAndDate(event, world.formatters, at(now))), "tomorrow, 10:00_AM");
}

TEST(EventTexts, DaysFollowTheirFirstEventAndTheZoneOfTheUser) {
    const TextEnvironment world(now);
    const auto monday = eventFrom("2026-03-02T09:00:00+01:00", "2026-03-02T10:00:00+01:00");
    const auto tuesday = eventFrom("2026-03-02T23:00:00Z", "2026-03-02T23:30:00Z");
    const auto laterOnMonday = eventFrom("2026-03-02T22:59:59Z", "2026-03-02T23:30:00Z");
    const auto days = gropedByDay({monday, tuesday, laterOnMonday}, world->calendar);
    std::vector<std::string> keys;
    for (const auto& [day, events] : days)
        keys.push_back(platform::formatRfc3339(day) + " " + std::to_string(events.size()));
    EXPECT_THAT(keys, testing::ElementsAre("2026-03-01T23:00:00.000Z 2", "2026-03-02T23:00:00.000Z 1"));
    EXPECT_TRUE(gropedByDay({}, world->calendar).empty());
}

Event sprintReview() {
    auto event = eventFrom("2026-03-05T09:00:00+01:00", "2026-03-05T10:00:00+01:00");
    event.title = " Sprint review\n";
    event.location = " Room 1 ";
    event.travelTime = 900;
    event.calendarName = "Work";
    event.videoConferenceLinks = {VideoConferenceLink::demo()};
    return event;
}

TEST(EventTexts, AScreenReaderHearsWhatWhereAndWhen) {
    const TextEnvironment world(now);
    EXPECT_EQ(readable(accessibilityValue(sprintReview(), world.formatters, at(now))),
              "Calendar event. Sprint review at Room 1. Starts on March 5, 2026 at 9:00_AM and ends on "
              "March 5, 2026 at 10:00_AM. 15 minutes travel time. Has a video call.");
    EXPECT_EQ(accessibilityHelp(sprintReview()), "This event belongs to calendar \"Work\".");

    auto task = eventFrom("2026-03-04T12:00:00+01:00", "2026-03-04T12:00:00+01:00");
    task.type = Event::EventType::appleReminder;
    task.calendarName = "To do";
    EXPECT_EQ(readable(accessibilityValue(task, world.formatters, at(now))),
              "Reminder. untitled. at 12:00_PM");
    EXPECT_EQ(accessibilityHelp(task), "This event belongs to reminder list \"To do\".");
    task.type = Event::EventType::hbrReminder;
    EXPECT_EQ(accessibilityHelp(task), std::nullopt);
    task.calendarName.reset();
    task.type = Event::EventType::calendarEvent;
    EXPECT_EQ(accessibilityHelp(task), std::nullopt);
    for (const std::optional<std::string>& title : {std::optional<std::string>(), {""}, {" \n"}}) {
        task.title = title;
        EXPECT_EQ(titleOrUntitled(task, *world.ref()), "untitled");
    }
    EXPECT_EQ(titleOrUntitled(sprintReview(), *world.ref()), " Sprint review\n");
}

TEST(EventTexts, ReadInGerman) {
    const TextEnvironment world(now, "de_DE");
    EXPECT_EQ(accessibilityValue(sprintReview(), world.formatters, at(now)),
              "Kalendertermin. Sprint review, Ort: Room 1. Beginnt am 5. März 2026 um 09:00 und endet am "
              "5. März 2026 um 10:00. 15 Minuten Wegzeit. Mit Videoanruf.");
}

TEST(EventTexts, AHebrewSentenceKeepsItsOrderAroundAnEnglishTitle) {
    const TextEnvironment world(now, "he_IL");
    const auto text = readable(accessibilityValue(sprintReview(), world.formatters, at(now)));
    EXPECT_THAT(text, testing::HasSubstr("<Sprint review>"));
    EXPECT_THAT(text, testing::HasSubstr("<Room 1>"));
    auto hebrew = sprintReview();
    hebrew.title = "ישיבת צוות";
    EXPECT_THAT(readable(accessibilityValue(hebrew, world.formatters, at(now))),
                testing::Not(testing::HasSubstr("<ישיבת")));
}

}  // namespace
