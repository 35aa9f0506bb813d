#include <HbrCore/CoreFixture.h>
#include <HbrCore/DeepLinks/DeepLinkActions.h>
#include <HbrCore/Events/EventLookup.h>
#include <gmock/gmock.h>
#include <support/RecordingWorkspace.h>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Kind = DeepLinkOutcome::Kind;

TEST(LinkOpener, OpensWebPagesAndConferenceProgramsOnly) {
    const auto workspace = std::make_shared<test::RecordingWorkspace>();
    auto services = VideoConferenceService::all();
    services.push_back({"own", "acme-call://[0-9]+", "Acme", true});
    services.push_back({"web", "(https|file)://acme", "Acme", false});
    test::TestEnvironment environment;
    const LinkOpener opener(services, workspace, environment);
    const std::pair<const char*, bool> cases[] = {{"https://zoom.us/j/1", true},
                                                  {"HTTP://example.org", true},
                                                  {"zoommtg://zoom.us/join?confno=1", true},
                                                  {"msteams:/l/meetup-join/x", true},
                                                  {"ts3server://voice.example.org", true},
                                                  {"acme-call://42", true},
                                                  {"https:///etc/passwd", false},
                                                  {"https:zoom.us/j/1", false},
                                                  {"file:///home/me/https://zoom.us/j/1", false},
                                                  {"javascript:alert(1)//https://zoom.us/j/1", false},
                                                  {"smb://server/https://zoom.us/j/1", false},
                                                  {"heedbanner://joinCall/E1", false},
                                                  {"mailto:me@example.org", false},
                                                  {"zoom.us/j/1", false},
                                                  {"/usr/bin/x", false}};
    for (const auto& [address, isOpened] : cases) {
        const auto url = platform::Url::parse(address).value();
        workspace->opened.clear();
        const auto refusal = opener.open(url);
        EXPECT_EQ(refusal.has_value(), !isOpened) << address;
        EXPECT_EQ(workspace->opened.size(), isOpened ? 1u : 0u) << address;
        EXPECT_TRUE(isOpened || refusal->find(address) != std::string::npos) << address;
    }
}

class DeepLinkActionsTest : public testing::Test {
  protected:
    DeepLinkOutcome join(std::string_view title) { return actions().joinCall(idOf(title)); }
    DeepLinkOutcome view(std::string_view title) { return actions().viewInCalendar(idOf(title)); }

    DeepLinkActions actions() { return DeepLinkActions(core.services(), workspace); }
    std::string idOf(std::string_view title) {
        for (const auto& event : core.services().aggregatedEventStore().events(at("2026-03-01T00:00:00Z"),
                                                                               at("2026-04-01T00:00:00Z"))) {
            if (event->title == title) return event->eventIdentifier;
        }
        return "unknown";
    }

    test::CoreFixture core;
    std::shared_ptr<test::RecordingWorkspace> workspace = std::make_shared<test::RecordingWorkspace>();
};

TEST_F(DeepLinkActionsTest, ACallIsJoinedInItsProgramWhereThereIsOneElseAsAPage) {
    const std::string start = "20260304T093000Z";
    core.write("calendars/work.ics",
               meeting("zoom", start, "LOCATION:https://zoom.us/j/12?pwd=ab\n") +
                   meeting("teams", start, "LOCATION:https://teams.microsoft.com/l/meetup-join/x\n") +
                   meeting("meet", start, "LOCATION:https://meet.google.com/abc-defg-hij\n") +
                   meeting("smb", start, "DESCRIPTION:smb://evil/https://zoom.us/j/1\n") +
                   meeting("ts", start, "LOCATION:ts3server://voice.example.org\n") + meeting("none", start) +
                   meeting("two", start, "DESCRIPTION:https://zoom.us/j/1 https://whereby.com/room\n"));
    core.reloaded();
    workspace->schemes = {"https", "zoommtg", "ts3server"};
    const std::pair<const char*, const char*> cases[] = {
        {"zoom", "zoommtg://zoom.us/join?confno=12&pwd=ab"},
        {"teams", "https://teams.microsoft.com/l/meetup-join/x"},
        {"meet",
         "https://accounts.google.com/AccountChooser?Email=me@example.org&continue=https://meet.google.com/"
         "abc-defg-hij"},
        {"ts", "ts3server://voice.example.org"}};
    for (const auto& [title, opened] : cases) {
        workspace->opened.clear();
        const auto outcome = join(title);
        EXPECT_EQ(outcome.kind, Kind::opened) << title;
        EXPECT_THAT(workspace->opened, ElementsAre(opened));
        EXPECT_EQ(outcome.url->absoluteString(), opened);
    }
    workspace->opened.clear();
    EXPECT_EQ(join("none").kind, Kind::failed);
    EXPECT_EQ(join("unknown").kind, Kind::unknownEvent);
    EXPECT_NE(join("smb").kind, Kind::opened);
    const auto several = join("two");
    EXPECT_EQ(several.kind, Kind::severalLinks);
    EXPECT_EQ(several.links.size(), 2u);
    EXPECT_THAT(workspace->opened, IsEmpty());

    core.services().eventSettings().storeCustomSettings(
        {.defaultConferenceUrl = platform::Url::parse("https://whereby.com/room")}, idOf("two"));
    EXPECT_EQ(join("two").kind, Kind::opened);
    EXPECT_THAT(workspace->opened, ElementsAre("https://whereby.com/room"));

    workspace->opened.clear();
    workspace->broken = {"zoommtg"};
    EXPECT_EQ(join("zoom").kind, Kind::opened);
    EXPECT_THAT(workspace->opened, ElementsAre("https://zoom.us/j/12?pwd=ab"));
    workspace->broken = {"zoommtg", "https"};
    EXPECT_EQ(join("zoom").message, "broken");
    workspace->schemes.clear();
    EXPECT_EQ(join("zoom").message, "no program is set up to open https: links");
}

TEST_F(DeepLinkActionsTest, TheCalendarIsTheEventsOwnPageElseTheProgram) {
    const std::string start = "20260304T093000Z";
    core.write("calendars/work.ics", meeting("page", start, "URL:https://events.example.org/1\n") +
                                         meeting("call", start, "URL:https://zoom.us/j/1\n") +
                                         meeting("file", start, "URL:file:///etc/passwd\n"));
    core.services().reminders().addReminder({"own", at("2026-03-04T09:30:00Z"), "Own", std::nullopt, 0});
    core.reloaded();
    EXPECT_EQ(view("page").kind, Kind::opened);
    EXPECT_THAT(workspace->opened, ElementsAre("https://events.example.org/1"));
    EXPECT_EQ(view("call").kind, Kind::failed);
    EXPECT_THAT(view("call").message, HasSubstr("no calendar program"));
    workspace->hasCalendar = true;
    workspace->opened.clear();
    EXPECT_EQ(view("call").message, "opened Planner");
    EXPECT_EQ(view("file").kind, Kind::opened);
    EXPECT_THAT(workspace->opened, ElementsAre("program for text/calendar", "program for text/calendar"));
    EXPECT_EQ(actions().viewInCalendar("own").kind, Kind::failed);
}

TEST_F(DeepLinkActionsTest, AnIdentifierMeansTheNearestOccurrence) {
    // The lead is longer than the pending period: today's occurrence is in none of the lists.
    core.write("calendars/work.ics", meeting("daily", "20260301T110000Z", "RRULE:FREQ=DAILY;COUNT=10\n") +
                                         meeting("past", "20260201T110000Z"));
    core.services().settings().setTimeOffsetSeconds(4 * 3600);
    core.reloaded();
    const std::string id = idOf("daily");
    const auto startOf = [&](const char* now) {
        core.environment.setNow(now);
        return eventWithIdentifier(core.services(), id)->startDate;
    };
    EXPECT_EQ(startOf("2026-03-04T09:00:00Z"), at("2026-03-04T11:00:00Z"));
    EXPECT_EQ(startOf("2026-03-04T11:30:00Z"), at("2026-03-04T11:00:00Z"));
    EXPECT_EQ(startOf("2026-03-04T12:30:00Z"), at("2026-03-05T11:00:00Z"));
    EXPECT_EQ(startOf("2026-03-13T00:00:00Z"), at("2026-03-10T11:00:00Z"));
    EXPECT_EQ(actions().preview(id).kind, Kind::preview);
    EXPECT_EQ(actions().preview("").kind, Kind::unknownEvent);
}

}  // namespace
