#include <HbrCore/CoreFixture.h>
#include <HbrCore/Scheduling/OverdueAlerts.h>
#include <System/MainQueue.h>
#include <gmock/gmock.h>

namespace {

using namespace hbr;
using test::at;
using test::meeting;
using testing::ElementsAre;
using testing::IsEmpty;

/// "TITLE due at TIME" of what is found now.
std::vector<std::string> overdue(CoreServices& core) {
    std::optional<std::vector<std::string>> found;
    findOverdueAlerts(core, [&](const std::vector<AlertInvocation>& alerts) {
        found.emplace();
        for (const AlertInvocation& one : alerts)
            found->push_back(*one.event->title + " due at " + one.date.description().substr(11, 8));
    });
    EXPECT_TRUE(platform::MainQueue::shared().runUntil([&] { return found.has_value(); }, 20));
    return found.value_or(std::vector<std::string>{});
}

TEST(OverdueAlerts, AreThoseOfEventsAheadOrBegunWithinTheirLeadByTheRulesOfAnyAlert) {
    const std::string travel = "X-APPLE-TRAVEL-DURATION;VALUE=DURATION:PT30M\n";
    test::CoreFixture core("2026-03-04T09:00:00Z");
    CoreServices& services = core.services();
    core.write("calendars/work.ics",
               meeting("Ahead", "20260304T090230Z") + meeting("Alert to come", "20260304T090500Z") +
                   meeting("Begun", "20260304T085500Z") + meeting("Begun too long ago", "20260304T085459Z") +
                   meeting("Own lead", "20260304T093000Z") + meeting("Left out", "20260304T090100Z") +
                   meeting("Travel", "20260304T091000Z", travel) + meeting("Hidden", "20260304T090100Z") +
                   meeting("Cancelled", "20260304T090100Z", "STATUS:CANCELLED\n") +
                   "BEGIN:VTODO\nUID:t\nSUMMARY:Task\nDUE:20260304T090100Z\nEND:VTODO\n"
                   "BEGIN:VTODO\nUID:u\nSUMMARY:Task that was due\nDUE:20260304T085959Z\nEND:VTODO\n");
    services.settings().setTimeOffsetSeconds(300);
    auto rule = FilterRule::makeDefault();
    rule.value = "Hidden";
    services.settings().setExcludeRules({rule});
    services.reminders().addReminder({"own", at("2026-03-04T09:10:00Z"), "Own", std::nullopt, 900});
    services.reminders().addReminder({"now", at("2026-03-04T09:00:00Z"), "Now", std::nullopt, 0});
    services.reminders().addReminder({"past", at("2026-03-04T08:58:59Z"), "Past", std::nullopt, 60});
    core.reloaded();
    const auto settingsOf = [&](const std::string& title, const std::function<void(EventSettings&)>& change) {
        for (const auto& event :
             services.aggregatedEventStore().events(at("2026-03-04T08:00:00Z"), at("2026-03-04T12:00:00Z"))) {
            if (event->title == title)
                services.eventSettings().updateCustomSettings(event->eventIdentifier,
                                                              Event::EventType::calendarEvent, change);
        }
    };
    settingsOf("Left out", [](EventSettings& settings) { settings.isExcluded = true; });
    settingsOf("Own lead", [](EventSettings& settings) {
        settings.usesCustomTimeOffset = true;
        settings.timeOffsetSeconds = 1801;
    });

    EXPECT_THAT(overdue(services),
                ElementsAre("Begun due at 08:50:00", "Ahead due at 08:57:30", "Alert to come due at 09:00:00",
                            "Own lead due at 08:59:59", "Own due at 08:55:00", "Now due at 09:00:00",
                            "Task that was due due at 08:54:59", "Task due at 08:56:00"));

    services.settings().setIncludeTravelTime(true);
    services.settings().setShowOnlyEventsWithAlert(true);
    core.write("calendars/alarm.ics",
               meeting("Alarm", "20260304T093000Z",
                       travel + "BEGIN:VALARM\nACTION:DISPLAY\nTRIGGER:-PT5M\nEND:VALARM\n"));
    services.aggregatedEventStore().refreshData();
    services.reminders().removeReminder("own");
    services.reminders().removeReminder("now");
    core.reloaded();
    EXPECT_THAT(overdue(services), ElementsAre("Alarm due at 08:55:00", "Task that was due due at 08:54:59",
                                               "Task due at 08:56:00"));
    services.settings().setShowOnlyEventsWithVideoConference(true);
    services.settings().setActiveReminderListIdentifiers({});
    EXPECT_THAT(overdue(services), IsEmpty());
}

}  // namespace
