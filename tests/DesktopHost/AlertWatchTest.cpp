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
    return {.date = at(date), .event = event, .isSnooze = isSnooze};
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
    std::vector<std::string> takeTold() { return std::exchange(told, {}); }

    test::TestEnvironment environment{"2026-03-04T09:00:00Z"};
    std::optional<Date> wakeDate;
    std::vector<std::string> told;
    AlertWatch watch{{.clock = environment->clock,
                      .wakeAt = [this](std::optional<Date> date) { wakeDate = date; },
                      .due = [this](const AlertInvocation& one) { told.push_back(one.event.id); },
                      .snoozeRemoved = [](const AlertInvocation&) {}}};
};

TEST_F(AlertWatchTest, TellsEachAlertOnceWhenItIsDueHoweverOftenEventsAreReloaded) {
    const auto early = alert("early", "2026-03-04T09:10:00Z");
    const auto late = alert("late", "2026-03-04T09:20:00Z");
    watch.didUpdateInvocations({late, early});
    runUntil("2026-03-04T09:09:59Z");
    watch.didUpdateInvocations({early, late});
    EXPECT_THAT(takeTold(), IsEmpty());
    runUntil("2026-03-04T09:10:00Z");
    EXPECT_THAT(takeTold(), ElementsAre("early"));
    // A reload at that very moment lists it once more, and with other words.
    auto renamed = early;
    renamed.event.title = "Renamed";
    watch.didUpdateInvocations({renamed, late});
    EXPECT_THAT(takeTold(), IsEmpty());
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeTold(), ElementsAre("late"));
}

TEST_F(AlertWatchTest, AnAlertThatAReloadNoLongerListsIsToldWhenItWasDueAndForgottenWhenNot) {
    watch.didUpdateInvocations(
        {alert("due", "2026-03-04T09:10:00Z"), alert("cancelled", "2026-03-04T09:20:00Z")});
    // The machine slept, or the reload of that minute came first.
    environment.setNow("2026-03-04T09:10:00Z");
    watch.didUpdateInvocations({});
    EXPECT_THAT(takeTold(), ElementsAre("due"));
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeTold(), IsEmpty());
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
    EXPECT_THAT(takeTold(), ElementsAre("event", "event"));

    snoozed.date = at("2026-03-04T09:30:00Z");
    watch.didUpdateInvocations({snoozed});
    watch.didRemoveSnoozedInvocation(snoozed);
    runUntil("2026-03-04T10:00:00Z");
    EXPECT_THAT(takeTold(), IsEmpty());
}

TEST_F(AlertWatchTest, CatchesUpOnWhatFellDueBeforeItUnlessItWasToldThen) {
    watch.restoreTold({{.eventId = "told",
                        .start = alert("told", "2026-03-04T08:59:30Z").event.startDate,
                        .alert = at("2026-03-04T08:59:30Z")}});
    watch.catchUp({alert("told", "2026-03-04T08:59:30Z"), alert("new", "2026-03-04T08:59:30Z"),
                   alert("to come", "2026-03-04T09:00:01Z")});
    EXPECT_THAT(takeTold(), ElementsAre("new"));
    watch.catchUp({alert("new", "2026-03-04T08:59:30Z")});
    EXPECT_THAT(takeTold(), IsEmpty());
}

}  // namespace
