#include <HbrCore/Explanation/EventExplainer.h>
#include <HbrCore/Explanation/ListableItems.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include <HbrCore/CoreFixture.h>

namespace {

using namespace hbr;
using test::at;
using test::meeting;

std::string todo(const std::string& title, const std::string& lines) {
    return "BEGIN:VTODO\nUID:" + title + "\nSUMMARY:" + title + "\n" + lines + "END:VTODO\n";
}

/// One of every kind around 10:00 in Berlin (09:00 UTC).
void writeItems(test::CoreFixture& core) {
    const std::string me = "ATTENDEE;PARTSTAT=";
    const std::string address = ":mailto:me@example.org\n";
    const std::string alarm = "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n";
    core.write(
        "calendars/home/items.ics",
        meeting("over", "20260304T070000Z") + meeting("ends now", "20260304T080000Z") +
            meeting("under way", "20260304T083000Z", "DESCRIPTION:https://zoom.us/j/1\n") +
            meeting("begins now", "20260304T090000Z") + meeting("30 s", "20260304T090030Z") +
            meeting("a minute", "20260304T090100Z") + meeting("20 min", "20260304T092000Z", alarm) +
            meeting("travel", "20260304T094000Z", "X-APPLE-TRAVEL-DURATION:PT30M\n") +
            meeting("an hour", "20260304T100000Z") + meeting("90 min", "20260304T103000Z") +
            meeting("hidden under way", "20260304T084000Z", "RRULE:FREQ=DAILY;COUNT=1\n") +
            meeting("hidden later", "20260304T110000Z", "RRULE:FREQ=DAILY;COUNT=1\n") +
            meeting("far travel", "20260304T110000Z", "X-APPLE-TRAVEL-DURATION:PT3H\n") +
            meeting("declined", "20260304T120000Z", me + "DECLINED" + address) +
            meeting("maybe", "20260304T130000Z", me + "TENTATIVE" + address + alarm) +
            meeting("cancelled", "20260304T140000Z", "STATUS:CANCELLED\n") +
            meeting("last second", "20260305T225959Z") + meeting("day after", "20260305T230000Z") +
            meeting("call", "20260304T150000Z", "LOCATION:https://meet.google.com/abc-defg-hij\n") +
            "BEGIN:VEVENT\nUID:whole day\nSUMMARY:whole day\nDTSTART;VALUE=DATE:20260304\nEND:VEVENT\n");
    core.write("calendars/home/tasks.ics",
               todo("task over", "DUE:20260304T085900Z\n") + todo("task now", "DUE:20260304T090000Z\n") +
                   todo("task soon", "DUE:20260304T090030Z\n") + todo("task 2h", "DUE:20260304T110000Z\n") +
                   todo("task done", "DUE:20260304T110000Z\nSTATUS:COMPLETED\n") + todo("task undated", "") +
                   todo("task of a day", "DUE;VALUE=DATE:20260305\n") +
                   todo("task far", "DUE:20260309T110000Z\n"));
    core.write("calendars/unwatched/items.ics", meeting("elsewhere", "20260304T150000Z"));
    core.services().reminders().addReminder({"r1", at("2026-03-04T09:00:00Z"), "own now", {}, 0});
    core.services().reminders().addReminder({"r2", at("2026-03-04T11:00:00Z"), "own ahead", {}, 60});
    core.services().reminders().addReminder({"r3", at("2026-03-04T11:00:00Z"), "own alerted", {}, 7200});
    core.services().reminders().addReminder({"r4", at("2026-03-06T11:00:00Z"), "own far", {}, 0});
}

using Listing = std::map<std::string, std::set<std::string>>;

/// Titles by where the manager's lists have them, alerts with their moment.
Listing listedByTheManager(CoreServices& core) {
    Listing result;
    reloadAndWait(core);
    const auto add = [&](const std::vector<Event>& events, const char* state) {
        for (const auto& event : events)
            result[*event.title].insert(state);
    };
    add(core.manager().currentEvents(), "current");
    add(core.manager().pendingEvents(), "pending");
    add(core.manager().pendingAppleReminderEvents(), "pending");
    // Demonstration events leave the alerts as they were.
    if (core.settings().debugScreenshotMode()) return result;
    for (const auto& alert : core.manager().invocations())
        result[*alert.event->title].insert("upcoming " + platform::formatRfc3339(alert.date));
    return result;
}

TEST(EventExplainer, SaysOfEverythingWhatTheListsSayWhateverTheSettings) {
    test::CoreFixture core;
    writeItems(core);
    core.reloaded();
    UserSettingsStore& settings = core.services().settings();
    EventSettingsStore& own = core.services().eventSettings();
    auto watched = settings.activeCalendarIdentifiers();
    const auto calendars = core.services().manager().fetchCalendars();
    std::erase_if(watched, [&](const std::string& identifier) {
        return std::ranges::any_of(calendars, [&](const auto& one) {
            return one.identifier == identifier && one.name == "unwatched";
        });
    });
    settings.setActiveCalendarIdentifiers(watched);
    settings.setUpcomingEventsDaysFilter(1);
    FilterRule rule = FilterRule::makeDefault();
    rule.value = "a";
    const auto items = [&] {
        auto all = listableItems(core.services(), at("2026-03-01T00:00:00Z"), at("2026-03-31T00:00:00Z"));
        std::ranges::move(undatedTasks(core.services()), std::back_inserter(all));
        return all;
    }();
    ASSERT_EQ(items.size(), 33u);

    const std::pair<const char*, std::function<void()>> changes[] = {
        {"as delivered", [] {}},
        {"travel time counts", [&] { settings.setIncludeTravelTime(true); }},
        {"a lead of two hours", [&] { settings.setTimeOffsetSeconds(7200); }},
        {"no travel time", [&] { settings.setIncludeTravelTime(false); }},
        {"no lead", [&] { settings.setTimeOffsetSeconds(0); }},
        {"a lead of a quarter", [&] { settings.setTimeOffsetSeconds(900); }},
        {"occurrences left out by themselves",
         [&] {
             for (const auto& item : items) {
                 const auto* event = std::get_if<platform::EKEventRef>(&item);
                 if (!event || !(*event)->title->starts_with("hidden")) continue;
                 core.services().hiddenOccurrences().hide(*Occurrence::of(**event), core.environment->now());
                 EXPECT_THAT(EventExplainer(core.services(), {}).explain(item).causes().front().command,
                             testing::Optional(testing::HasSubstr("--include --on 2026-03-04T")));
             }
         }},
        {"a rule", [&] { settings.setExcludeRules({rule}); }},
        {"only calls", [&] { settings.setShowOnlyEventsWithVideoConference(true); }},
        {"only alarms", [&] { settings.setShowOnlyEventsWithAlert(true); }},
        {"only accepted", [&] { settings.setShowOnlyAcceptedEvents(true); }},
        {"today", [&] { settings.setUpcomingEventsDaysFilter(0); }},
        {"everything left out by itself",
         [&] {
             settings.setShowOnlyEventsWithAlert(false);
             settings.setExcludeRules({});
             for (const auto& item : items) {
                 const Event outline = outlineOf(item);
                 own.storeCustomSettings({.type = outline.type, .isExcluded = true}, outline.id);
             }
         }},
        {"demonstration", [&] { settings.setDebugScreenshotMode(true); }}};
    for (const auto& [name, change] : changes) {
        SCOPED_TRACE(name);
        change();
        const auto listed = listedByTheManager(core.services());
        const EventExplainer explainer(core.services(), {});
        for (const auto& item : items) {
            const auto explanation = explainer.explain(item);
            const std::string title = *explanation.event->title;
            std::string state = explanation.state ? std::string(rawValue(*explanation.state)) : "none";
            if (explanation.alertDate) state += " " + platform::formatRfc3339(*explanation.alertDate);
            const auto found = listed.find(title);
            const auto states = found == listed.end() ? std::set<std::string>{"none"} : found->second;
            EXPECT_TRUE(states.contains(state)) << title << ": " << state << ", not " << *states.begin();
            EXPECT_EQ(explanation.isShown(), explanation.causes().empty()) << title;
        }
    }
}

/// The rules that hide the item of that title, and the commands that change them.
std::string causesOf(test::CoreFixture& core, std::string_view title) {
    const EventExplainer explainer(core.services(), {});
    for (const auto& item :
         listableItems(core.services(), at("2026-03-01T00:00:00Z"), at("2026-03-31T00:00:00Z"))) {
        if (outlineOf(item).title != title) continue;
        std::string causes;
        for (const auto& cause : explainer.explain(item).causes()) {
            causes += (causes.empty() ? "" : " + ") + std::string(rawValue(cause.rule));
            // Everything behind "heedbanner ".
            if (cause.command) causes += ": " + cause.command->substr(11);
        }
        return causes;
    }
    return "not found";
}

TEST(EventExplainer, NamesTheRuleThatHidesAnItemAndTheCommandThatChangesIt) {
    test::CoreFixture core;
    writeItems(core);
    core.reloaded();
    UserSettingsStore& settings = core.services().settings();
    for (const auto& [title, cause] : {std::pair{"declined", "answer"},
                                       {"cancelled", "cancelled"},
                                       {"whole day", "allDay"},
                                       {"over", "past"},
                                       {"task done", "completed"},
                                       {"task of a day", "alarm"},
                                       {"maybe", ""}})
        EXPECT_EQ(causesOf(core, title), cause) << title;
    settings.setShowOnlyAcceptedEvents(true);
    settings.setShowOnlyEventsWithVideoConference(true);
    EXPECT_EQ(causesOf(core, "maybe"),
              "answer: settings set showOnlyAcceptedEvents false + "
              "call: settings set showOnlyEventsWithVideoConference false");
}

TEST(EventExplainer, BetweenAlertAndAlertPeriodItNamesTheLeadOrTheTravelTimeOrBoth) {
    const std::string shorter = "lead: settings set timeOffsetSeconds 1h";
    const std::string noTravel = "travelTime: settings set includeTravelTime false";
    // The event begins at 12:00, half an hour away by travel.
    const std::tuple<const char*, std::int64_t, bool, std::string> cases[] = {
        {"2026-03-04T10:00:00Z", 7200, false, ""},
        {"2026-03-04T10:00:01Z", 7200, false, shorter},
        {"2026-03-04T10:59:59Z", 7200, false, shorter},
        {"2026-03-04T11:00:00Z", 7200, false, ""},
        {"2026-03-04T11:29:00Z", 60, true, ""},
        {"2026-03-04T11:29:01Z", 60, true, noTravel},
        {"2026-03-04T11:59:00Z", 60, true, noTravel},
        {"2026-03-04T11:59:01Z", 60, true, ""},
        {"2026-03-04T10:20:00Z", 7200, true, shorter},
        {"2026-03-04T10:30:01Z", 7200, true, shorter + " + " + noTravel},
        {"2026-03-04T12:00:00Z", 60, false, ""},
        {"2026-03-04T13:00:00Z", 60, false, ""},
        {"2026-03-04T13:00:01Z", 60, false, "past"}};
    for (const auto& [now, lead, travel, causes] : cases) {
        test::CoreFixture core(now);
        core.write("calendars/a.ics",
                   meeting("visit", "20260304T120000Z", "X-APPLE-TRAVEL-DURATION:PT30M\n"));
        core.services().settings().setTimeOffsetSeconds(lead);
        core.services().settings().setIncludeTravelTime(travel);
        core.reloaded();
        EXPECT_EQ(causesOf(core, "visit"), causes) << now << " " << lead;
    }
}

TEST(EventExplainer, TheAlertPeriodReachesBeyondTheDaysLookedAt) {
    // Half a minute before midnight.
    test::CoreFixture core("2026-03-04T22:59:30Z");
    core.write("calendars/a.ics",
               meeting("night", "20260304T230000Z") + meeting("later", "20260304T231000Z"));
    core.services().settings().setUpcomingEventsDaysFilter(0);
    EXPECT_EQ(test::titles(core.reloaded().allCachedUpcomingEvents()), std::vector<std::string>{"night"});
    EXPECT_EQ(causesOf(core, "night"), "");
    EXPECT_EQ(causesOf(core, "later"), "days: settings set upcomingEventsDaysFilter 1");
}

}  // namespace
