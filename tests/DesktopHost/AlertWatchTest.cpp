#include <DesktopHost/AlertWatch.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using platform::Date;
using test::at;
using testing::ElementsAre;
using testing::IsEmpty;

AlertInvocation alert(const std::string& id, const char* date, bool isSnooze = false) {
    Event event;
    event.id = id;
    event.startDate = at(date).addingTimeInterval(60);
    event.endDate = event.startDate.addingTimeInterval(3600);
    return {.date = at(date), .event = std::make_shared<const Event>(event), .isSnooze = isSnooze};
}

template <class Change>
void changeEvent(AlertInvocation& alert, const Change& change) {
    Event event = *alert.event;
    change(event);
    alert.event = std::make_shared<const Event>(event);
}
void move(AlertInvocation& alert, const char* start) {
    changeEvent(alert, [&](Event& event) { event.startDate = at(start); });
}

class AlertWatchTest : public testing::Test {
  protected:
    /// Lets the clock run, waking the watch when it wished.
    void runUntil(const char* moment) {
        while (wakeDate && *wakeDate <= at(moment)) {
            environment.advance(wakeDate->timeIntervalSince(environment->now()));
            wakeDate.reset();
            watch.wake();
        }
        environment.setNow(moment);
    }
    std::vector<std::string> takeDue() { return std::exchange(due, {}); }

    test::TestEnvironment environment{"2026-03-04T09:00:00Z"};
    std::optional<Date> wakeDate;
    std::vector<std::string> due;
    std::vector<HandledAlert> remembered;
    AlertWatch watch{{.clock = environment->clock,
                      .wakeAt = [this](std::optional<Date> date) { wakeDate = date; },
                      .due = [this](const AlertInvocation& one) { due.push_back(one.event->id); },
                      .snoozeRemoved = [](const AlertInvocation&) {},
                      .handled = [this](const auto& alerts) { remembered = alerts; }}};
};

TEST_F(AlertWatchTest, EachAlertIsDueOnceHoweverOftenEventsAreReloaded) {
    const auto early = alert("early", "2026-03-04T09:10:00Z");
    const auto late = alert("late", "2026-03-04T09:20:00Z");
    watch.didUpdateInvocations({late, early});
    runUntil("2026-03-04T09:09:59Z");
    watch.didUpdateInvocations({early, late});
    EXPECT_THAT(takeDue(), IsEmpty());
    runUntil("2026-03-04T09:10:00Z");
    EXPECT_THAT(takeDue(), ElementsAre("early"));
    // A reload at that very moment lists it once more, and with other words.
    auto renamed = early;
    changeEvent(renamed, [](Event& event) { event.title = "Renamed"; });
    watch.didUpdateInvocations({renamed, late});
    EXPECT_THAT(takeDue(), IsEmpty());
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeDue(), ElementsAre("late"));
}

TEST_F(AlertWatchTest, AnAlertThatAReloadNoLongerListsIsDueIfItsMomentHasComeAndForgottenIfNot) {
    watch.didUpdateInvocations(
        {alert("due", "2026-03-04T09:10:00Z"), alert("cancelled", "2026-03-04T09:20:00Z")});
    // The machine slept, or the reload of that minute came first.
    environment.setNow("2026-03-04T09:10:00Z");
    watch.didUpdateInvocations({});
    EXPECT_THAT(takeDue(), ElementsAre("due"));
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeDue(), IsEmpty());
}

TEST_F(AlertWatchTest, ASnoozeIsAnAlertOfItsOwnUntilItIsRemoved) {
    const auto first = alert("event", "2026-03-04T09:10:00Z");
    auto snoozed = first;
    snoozed.date = at("2026-03-04T09:15:00Z");
    snoozed.isSnooze = true;
    watch.didUpdateInvocations({first});
    runUntil("2026-03-04T09:10:00Z");
    watch.didUpdateInvocations({snoozed});
    runUntil("2026-03-04T09:15:00Z");
    EXPECT_THAT(takeDue(), ElementsAre("event", "event"));

    snoozed.date = at("2026-03-04T09:30:00Z");
    watch.didUpdateInvocations({snoozed});
    watch.didRemoveSnoozedInvocation(snoozed);
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeDue(), IsEmpty());
}

TEST_F(AlertWatchTest, AnOverdueAlertIsDueAtOnceUnlessItsEventAlertedBeforeAlsoInAnotherRun) {
    const auto late = alert("late", "2026-03-04T08:59:30Z");
    watch.didFindOverdue({late});
    watch.didFindOverdue({late});
    EXPECT_THAT(takeDue(), ElementsAre("late"));
    auto longerLead = late;
    longerLead.date = at("2026-03-04T08:50:00Z");
    watch.didFindOverdue({longerLead});
    EXPECT_THAT(takeDue(), IsEmpty()) << "it alerted with the lead of before";
    auto moved = late;
    move(moved, "2026-03-04T09:00:10Z");
    watch.didFindOverdue({moved});
    EXPECT_THAT(takeDue(), ElementsAre("late"));

    const HandledAlertsFile file(environment);
    EXPECT_THAT(file.load(), IsEmpty());
    file.save(remembered);
    EXPECT_EQ(file.load(), remembered);
    watch.restoreHandled({});
    watch.restoreHandled(file.load());
    watch.didFindOverdue({late, moved});
    EXPECT_THAT(takeDue(), IsEmpty());
    environment.home.write("data/heedbanner/alerts.json", "[{\"event\": 1}, 2");
    EXPECT_THAT(file.load(), IsEmpty());

    // With a lead of a day an alert can be found overdue until a day after the start.
    auto early = alert("early", "2026-03-03T09:00:00Z");
    move(early, "2026-03-04T09:00:00Z");
    watch.didFindOverdue({early});
    environment.setNow("2026-03-05T08:59:59Z");
    watch.didFindOverdue({alert("other", "2026-03-05T08:59:30Z"), early});
    EXPECT_THAT(takeDue(), ElementsAre("early", "other"));
    environment.setNow("2026-03-07T09:00:00Z");
    watch.didFindOverdue({alert("last", "2026-03-07T08:59:30Z")});
    EXPECT_EQ(remembered.size(), 2u) << "what is long past is forgotten";
}

TEST_F(AlertWatchTest, AnOwnReminderThatWasMovedAfterItsAlertIsDueAtItsNewTime) {
    auto reminder = alert("own", "2026-03-04T08:59:00Z");
    changeEvent(reminder, [](Event& event) { event.type = Event::EventType::hbrReminder; });
    move(reminder, "2026-03-04T09:05:00Z");
    watch.didFindOverdue({reminder});
    EXPECT_THAT(takeDue(), ElementsAre("own"));
    move(reminder, "2026-03-04T09:06:00Z");
    watch.didUpdateInvocations({});
    watch.didFindOverdue({reminder});
    runUntil("2026-03-04T09:05:59Z");
    EXPECT_THAT(takeDue(), IsEmpty());
    runUntil("2026-03-04T09:06:00Z");
    EXPECT_THAT(takeDue(), ElementsAre("own"));
}

}  // namespace
