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
    std::uint64_t number;
    /// Its lists replaced those of a reload that was started later.
    bool isBehind = false;
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
    if (reload->isBehind) startReload(reload->context, true, {});
}

void showDemoEvents(const Reload& reload) {
    const DemoEvents& demo = *reload.context->services.demoEvents;
    reload.context->lists.publish(
        reload.number, {.current = references({demo.demo_makeOngoingEventForScreenshots()}),
                        .scheduled = references({demo.demo_upcomingEvent1(), demo.demo_upcomingEvent2(),
                                                 demo.demo_upcomingEvent3()}),
                        .pending = {},
                        .snoozedPastAppleReminders = {},
                        .pendingAppleReminders = references({demo.demo_upcomingAppleReminderEvent1()})});
}

std::vector<ScheduledAlert> computeAlerts(const Reload& reload, const AlertSettings& settings,
                                          std::optional<EventSettingsStore::Settings> eventSettings,
                                          platform::Date now) {
    ReloadContext& context = *reload.context;
    const auto& services = context.services;
    const platform::Calendar& calendar = services.environment->calendar;
    const auto rules = services.settings->excludeRules();
    const AlertSchedule schedule(settings, std::move(eventSettings), *services.parser, calendar, now,
                                 &context.conversions);
    services.reminders->purgePastReminders();

    std::vector<ScheduledAlert> alerts;
    schedule.append(filteredApplyingRules(reload.events, rules, true, calendar), alerts);
    schedule.append(services.reminders->reminders(reload.start, reload.end), alerts);
    schedule.append(filteredApplyingRules(reload.reminders, rules, true, calendar), alerts);
    context.conversions.forgetUnused();
    return alerts;
}

EventRefs eventsOf(const std::vector<ScheduledAlert>& alerts) {
    EventRefs events;
    events.reserve(alerts.size());
    for (const ScheduledAlert& alert : alerts)
        events.push_back(alert.event);
    sortByStart(events);
    return events;
}

EventRefs snoozedPastTasks(const ReloadContext& context, platform::Date now) {
    std::vector<Event> events;
    for (AlertInvocation& alert : context.alerts.snoozed()) {
        const bool isPast = alert.event.startDate < now;
        if (alert.event.type == Event::EventType::appleReminder && isPast) {
            events.push_back(std::move(alert.event));
        }
    }
    return references(std::move(events));
}

/// Rebuilds alerts and lists from what was queried.
void refresh(ReloadRef reload) {
    ReloadContext& context = *reload->context;
    const AggregatedEventStore& store = *context.services.aggregatedEventStore;
    // One moment and one reading of the settings for alerts and lists: an alert that falls due in between is
    // scheduled or pending, not both and not neither.
    const platform::Date now = context.services.environment->now();
    const AlertSettings settings = AlertSettings::of(*context.services.settings);
    AggregatedEventStore::Choices choices{
        .attendance = {settings.showOnlyEventsWithAlert, settings.showOnlyAcceptedEvents},
        .timeOffset = static_cast<double>(settings.timeOffsetSeconds),
        .eventSettings = context.services.eventSettings->customSettings()};
    auto alerts = computeAlerts(*reload, settings, choices.eventSettings, now);
    EventLists lists{.current = references(store.currentEvents(now, choices)),
                     .scheduled = eventsOf(alerts),
                     .pending = references(store.pendingEvents(now, choices)),
                     .snoozedPastAppleReminders = snoozedPastTasks(context, now),
                     .pendingAppleReminders = {}};
    context.alerts.replaceScheduled(std::move(alerts));
    store.pendingAppleReminderEvents(
        now, std::move(choices),
        [reload = std::move(reload), lists = std::move(lists)](std::vector<Event> tasks) mutable {
            lists.pendingAppleReminders = references(std::move(tasks));
            reload->isBehind = !reload->context->lists.publish(reload->number, std::move(lists));
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
    reload->number = ++context->started;
    reload->context = std::move(context);
    reload->shouldPostNotification = shouldPostNotification;
    reload->completion = std::move(completion);

    if (services.settings->debugScreenshotMode()) {
        showDemoEvents(*reload);
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
