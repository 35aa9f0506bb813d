#include "Reload.h"

#include <Foundation/MainQueue.h>
#include <HbrCore/Events/DemoEvents.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Scheduling/ReloadWindow.h>
#include <HbrCore/Stores/AggregatedEventStore.h>
#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <MxLogger/MxLogger.h>

#include <algorithm>
#include <iterator>
#include <utility>
#include <vector>

#include "Events/EventOrder.h"

namespace hbr {

namespace {

using platform::EKEventRef;
using platform::EKReminderRef;

/// One reload on its way through the threads. The store's worker hands it over to the main queue and keeps
/// nothing of it: the last one to let go of the store must not be the store's own thread.
struct Reload {
    std::shared_ptr<ReloadContext> context;
    bool shouldPostNotification;
    std::function<void()> completion;
    platform::Date start;
    platform::Date end;
    std::vector<EKEventRef> events;
    std::vector<EKReminderRef> reminders;
};

using ReloadRef = std::shared_ptr<Reload>;

void onMainQueue(ReloadRef reload, void (*step)(ReloadRef)) {
    platform::MainQueue::shared().async(
        [reload = std::move(reload), step]() mutable { step(std::move(reload)); });
}

void finish(ReloadRef reload) {
    ReloadContext& context = *reload->context;
    if (auto delegate = context.delegate.load()->lock()) delegate->didUpdateInvocations(context.alerts.all());
    if (reload->shouldPostNotification) context.services.center.post(didReloadEventsNotification);
    if (reload->completion) reload->completion();
}

void showDemoEvents(ReloadContext& context) {
    const DemoEvents& demo = *context.services.demoEvents;
    context.lists.current.store({demo.demo_makeOngoingEventForScreenshots()});
    context.lists.pending.store({});
    context.lists.scheduled.store(
        {demo.demo_upcomingEvent1(), demo.demo_upcomingEvent2(), demo.demo_upcomingEvent3()});
    context.lists.snoozedPastAppleReminders.store({});
    context.lists.pendingAppleReminders.store({demo.demo_upcomingAppleReminderEvent1()});
}

std::vector<AlertInvocation> computeAlerts(const Reload& reload, platform::Date now) {
    const auto& services = reload.context->services;
    const platform::Calendar& calendar = services.environment->calendar;
    const auto rules = services.settings->excludeRules();
    const AlertSchedule schedule(AlertSettings::of(*services.settings), *services.eventSettings,
                                 *services.parser, calendar, now);
    services.reminders->purgePastReminders();

    auto alerts = schedule.invocations(filteredApplyingRules(reload.events, rules, true, calendar));
    auto append = [&alerts](std::vector<AlertInvocation> more) {
        std::ranges::move(more, std::back_inserter(alerts));
    };
    append(schedule.invocations(services.reminders->reminders(reload.start, reload.end)));
    append(schedule.invocations(filteredApplyingRules(reload.reminders, rules, true, calendar)));
    return alerts;
}

std::vector<Event> eventsOf(const std::vector<AlertInvocation>& alerts) {
    std::vector<Event> events;
    events.reserve(alerts.size());
    for (const AlertInvocation& alert : alerts)
        events.push_back(alert.event);
    sortByStart(events);
    return events;
}

std::vector<Event> snoozedPastTasks(const ReloadContext& context, platform::Date now) {
    std::vector<Event> events;
    for (AlertInvocation& alert : context.alerts.snoozed()) {
        const bool isPast = alert.event.startDate < now;
        if (alert.event.type == Event::EventType::appleReminder && isPast) {
            events.push_back(std::move(alert.event));
        }
    }
    return events;
}

/// Rebuilds alerts and lists from what was queried.
void refresh(ReloadRef reload) {
    ReloadContext& context = *reload->context;
    const auto& services = context.services;
    // One moment for alerts and lists: an alert that falls due in between is scheduled or pending, not both.
    const platform::Date now = services.environment->now();
    auto alerts = computeAlerts(*reload, now);
    auto scheduled = eventsOf(alerts);
    context.alerts.replaceScheduled(std::move(alerts));

    context.lists.current.store(services.aggregatedEventStore->currentEvents(now));
    context.lists.scheduled.store(std::move(scheduled));
    context.lists.pending.store(services.aggregatedEventStore->pendingEvents(now));
    context.lists.snoozedPastAppleReminders.store(snoozedPastTasks(context, now));

    const AggregatedEventStore& store = *services.aggregatedEventStore;
    store.pendingAppleReminderEvents(now, [reload = std::move(reload)](std::vector<Event> tasks) mutable {
        reload->context->lists.pendingAppleReminders.store(std::move(tasks));
        onMainQueue(std::move(reload), finish);
    });
}

}  // namespace

void startReload(std::shared_ptr<ReloadContext> context, bool shouldPostNotification,
                 std::function<void()> completion) {
    MxLogger::debug("reloading events");
    const auto& services = context->services;
    const AggregatedEventStore& store = *services.aggregatedEventStore;
    auto reload = std::make_shared<Reload>();
    reload->context = std::move(context);
    reload->shouldPostNotification = shouldPostNotification;
    reload->completion = std::move(completion);

    if (services.settings->debugScreenshotMode()) {
        showDemoEvents(*reload->context);
        return onMainQueue(std::move(reload), finish);
    }
    const platform::Date now = services.environment->now();
    reload->start = now;
    reload->end =
        endOfReloadWindow(services.environment->calendar, now, services.settings->upcomingEventsDaysFilter());
    reload->events = store.events(reload->start, reload->end);
    const platform::Date end = reload->end;
    store.reminders(now, end, [reload = std::move(reload)](std::vector<EKReminderRef> reminders) mutable {
        reload->reminders = std::move(reminders);
        onMainQueue(std::move(reload), refresh);
    });
}

}  // namespace hbr
