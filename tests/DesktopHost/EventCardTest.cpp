#include "EventCard.h"

#include <HbrCore/CoreFixture.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <gmock/gmock.h>

namespace {

using namespace hbr;
using testing::ElementsAreArray;

/// What a card says and offers that may depend on the clock.
std::vector<std::string> words(const platform::Card& card) {
    std::vector<std::string> words = card.lines;
    if (card.primary) words.push_back(card.primary->label);
    for (const auto* choices : {&card.buttons, &card.menu}) {
        for (const auto& choice : *choices)
            words.push_back(choice.label);
    }
    return words;
}

class EventCardTest : public testing::Test {
  protected:
    platform::Card card(const Event& event) { return eventCard(core.services(), texts, event, {}); }

    test::CoreFixture core;
    const HeedbannerWidgetBundle bundle{core.environment,
                                        [this]() -> CoreServices& { return core.services(); }};
    const CardTexts texts{core.services(), bundle};
};

TEST_F(EventCardTest, SaysUntilWhenItIsTrue) {
    struct Case {
        const char* start;
        double length;
    };
    // An hour before and after noon in Berlin, at odd seconds, over midnight, a reminder, of two days.
    const std::vector<Case> cases = {{"2026-03-04T11:00:00Z", 3600}, {"2026-03-04T11:00:17Z", 133},
                                     {"2026-03-04T22:59:30Z", 90},   {"2026-03-04T12:00:05Z", 0},
                                     {"2026-03-06T09:00:00Z", 3600}, {"2026-03-03T23:00:00Z", 172800}};
    for (const Case& c : cases) {
        Event event;
        event.title = "Standup";
        event.startDate = test::at(c.start);
        event.endDate = event.startDate.addingTimeInterval(c.length);
        if (c.length == 0) event.type = Event::EventType::hbrReminder;
        for (const auto around : {event.startDate, event.endDate, test::at("2026-03-04T23:00:00Z")}) {
            platform::Card shown;
            int renewals = 0;
            for (int second = -130; second <= 130; ++second) {
                const auto now = around.addingTimeInterval(second + 0.01);
                const auto fresh = [&](platform::Date moment) {
                    core.environment.setNow(moment);
                    return card(event);
                };
                if (second == -130) shown = fresh(now);
                while (shown.changesAt && *shown.changesAt <= now) {
                    shown = fresh(*shown.changesAt);
                    ++renewals;
                }
                ASSERT_THAT(words(shown), ElementsAreArray(words(fresh(now)))) << c.start << " " << second;
            }
            EXPECT_LE(renewals, 200) << c.start;
        }
    }
}

TEST_F(EventCardTest, LeavesOutLinesThatAreOnlyACallThatItsButtonJoins) {
    const std::string call = "https://zoom.us/j/1";
    Event event;
    event.videoConferenceLinks = {{VideoConferenceService::zoom(), *platform::Url::parse(call)}};
    event.location = call;
    event.notes = "Agenda\n " + call + " \nor by " + call;
    for (const bool isOver : {false, true}) {
        event.startDate = core.environment->now().addingTimeInterval(isOver ? -7200 : 60);
        event.endDate = event.startDate.addingTimeInterval(60);
        const auto shown = card(event);
        EXPECT_EQ(shown.place, isOver ? call : "");
        EXPECT_EQ(shown.notes, isOver ? *event.notes : "Agenda\nor by " + call);
    }
}

TEST_F(EventCardTest, NamesParticipantsAsTheContactsDo) {
    core.environment.home.write(
        "contacts/ada.vcf",
        "BEGIN:VCARD\r\nVERSION:3.0\r\nFN:Ada Lovelace\r\nN:Lovelace;Ada;;;\r\n"
        "NICKNAME:The Countess of Lovelace\r\nEMAIL:ada@example.org\r\nEND:VCARD\r\n");
    core.contacts("contacts");
    Event event;
    event.participantsData.push_back({.name = "A.",
                                      .email = "ada@example.org",
                                      .contactPredicate = {.email = "ada@example.org", .name = ""}});
    const auto shown = card(event);
    ASSERT_EQ(shown.people.size(), 1u);
    EXPECT_EQ(shown.people[0].name, "Ada Lovelace");
}

TEST_F(EventCardTest, ListsFiftyParticipantsAndTwentyCallsAndSaysThatThereAreMore) {
    Event event;
    for (int i = 1; i <= 51; ++i)
        event.participantsData.push_back(
            {.name = "P" + std::to_string(i), .email = {}, .contactPredicate = {}});
    const auto shown = card(event);
    ASSERT_EQ(shown.people.size(), 51u);
    EXPECT_EQ(shown.people[49].name, "P50");
    EXPECT_EQ(shown.people[50].name, "1 more participant");
    event.participantsData.pop_back();
    EXPECT_EQ(card(event).people.back().name, "P50");

    std::vector<VideoConferenceLink> links;
    for (int i = 1; i <= 21; ++i)
        links.push_back({VideoConferenceService::zoom(),
                         *platform::Url::parse("https://zoom.us/j/" + std::to_string(i))});
    const auto choice = callChoiceCard(texts, event, links, {});
    ASSERT_EQ(choice.buttons.size(), 20u);
    EXPECT_EQ(choice.buttons.back().label, "Zoom: zoom.us/j/20");
    EXPECT_EQ(choice.lines.back(),
              "Only the first 20 calls are listed. The others are in the event's notes.");
}

}  // namespace
