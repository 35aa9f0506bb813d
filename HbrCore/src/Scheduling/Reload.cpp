#include "Reload.h"

#include <HbrCore/Events/DemoEvents.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Stores/AggregatedEventStore.h>
#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <MxLogger/MxLogger.h>
#include <System/MainQueue.h>

#include <initializer_list>
#include <utility>
#include <vector>

#include "Events/EventOrder.h"

namespace hbr {

namespace {

using platform::EKEventRef;
using platform::EKReminderRef;

/// One reload on its way through the threads. The store's worker hands it over to the main queue and keeps
/// nothing of it: the store's own thread must not be the last to release the store.
struct Reload {
    std::shared_ptr<ReloadContext> context;
    std::uint64_t number = 0;
    ReloadSharing::RoundRef round;
    /// Its lists replaced those of a reload that was started later.
    bool isBehind = false;
    bool shouldPostNotification = false;
    std::shared_ptr<const ReloadSettings> settings;
    ReloadWindow window;
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
    if (auto delegate = context.delegate.load()->lock())
        delegate->didUpdateInvocations(*context.alerts.all());
    if (reload->shouldPostNotification) context.services.center.post(didReloadEventsNotification);
    for (const auto& completion : context.sharing.end(reload->round))
        completion();
    if (reload->isBehind) startReload(reload->context, ReloadKind::announced);
}

void publish(Reload& reload, EventLists lists) {
    ReloadContext& context = *reload.context;
    reload.isBehind = !context.lists.publish(reload.number, std::move(lists));
    if (reload.isBehind) context.sharing.forgetNewest();
}

EventRefs references(std::vector<Event> events) {
    EventRefs list;
    list.reserve(events.size());
    for (Event& event : events)
        list.push_back(std::make_shared<const Event>(std::move(event)));
    return list;
}

EventLists demoEvents(const DemoEvents& demo) {
    EventLists lists;
    lists.current = references({demo.demo_makeOngoingEventForScreenshots()});
    lists.scheduled =
        references({demo.demo_upcomingEvent1(), demo.demo_upcomingEvent2(), demo.demo_upcomingEvent3()});
    lists.pendingAppleReminders = references({demo.demo_upcomingAppleReminderEvent1()});
    return lists;
}

std::vector<AlertInvocation> computeAlerts(Reload& reload, platform::Date now, EventRefs& insideLead) {
    ReloadContext& context = *reload.context;
    const auto& services = context.services;
    const ReloadSettings& settings = *reload.settings;
    const AlertSchedule schedule(settings.alerts, settings.eventSettings, *services.parser,
                                 services.environment->calendar, now, &context.conversions);
    services.reminders->purgePastReminders();
    context.exclusions.setRules(settings.excludeRules);
    std::vector<AlertInvocation> alerts;
    schedule.append(context.exclusions.withoutExcluded(std::move(reload.events)), alerts, &insideLead);
    schedule.append(services.reminders->reminders(reload.window.start, reload.window.end), alerts,
                    &insideLead);
    schedule.append(context.exclusions.withoutExcluded(std::move(reload.reminders)), alerts);
    context.exclusions.forgetUnused();
    sortByStart(insideLead);
    return alerts;
}

EventRefs eventsOf(const std::vector<AlertInvocation>& alerts) {
    EventRefs events;
    events.reserve(alerts.size());
    for (const AlertInvocation& alert : alerts)
        events.push_back(alert.event);
    sortByStart(events);
    return events;
}

EventRefs snoozedPastTasks(const ReloadContext& context, platform::Date now) {
    EventRefs events;
    for (AlertInvocation& alert : context.alerts.snoozed()) {
        const bool isPast = alert.event->startDate < now;
        if (alert.event->type == Event::EventType::appleReminder && isPast)
            events.push_back(std::move(alert.event));
    }
    return events;
}

/// Rebuilds alerts and lists from what was queried.
void refresh(ReloadRef reload) {
    ReloadContext& context = *reload->context;
    const AggregatedEventStore& store = *context.services.aggregatedEventStore;
    // One moment and one reading of the settings for alerts and lists: an alert that falls due in between is
    // scheduled or pending, not both and not neither.
    const platform::Date now = context.services.environment->now();
    context.sharing.setMoment(reload->round, now);
    const auto choices = reload->settings->choices();
    const auto make = [&context](const EKEventRef& record) { return context.conversions.of(record); };

    EventLists lists;
    auto alerts = computeAlerts(*reload, now, lists.insideLead);
    lists.current = store.currentEvents(now, choices, make);
    lists.scheduled = eventsOf(alerts);
    lists.pending = store.pendingEvents(now, choices, make);
    lists.snoozedPastAppleReminders = snoozedPastTasks(context, now);
    context.conversions.forgetUnused();
    context.alerts.replaceScheduled(std::move(alerts));
    store.pendingAppleReminderEvents(
        now, choices,
        [reload = std::move(reload), lists = std::move(lists)](std::vector<Event> tasks) mutable {
            lists.pendingAppleReminders = references(std::move(tasks));
            publish(*reload, std::move(lists));
            onMainQueue(std::move(reload), finish);
        });
}

ReloadInputs currentInputs(const ReloadContext& context) {
    return {.stored = context.settings.stored(),
            .storeRevision = context.services.aggregatedEventStore->revision(),
            .changes = context.changes};
}

void run(ReloadRef reload) {
    MxLogger::debug("reloading events");
    const auto& services = reload->context->services;
    const platform::Date now = services.environment->now();
    reload->number = ++reload->context->started;
    if (reload->settings->isScreenshotMode) {
        reload->context->sharing.setMoment(reload->round, now);
        publish(*reload, demoEvents(*services.demoEvents));
        return onMainQueue(std::move(reload), finish);
    }
    const AggregatedEventStore& store = *services.aggregatedEventStore;
    reload->window = reload->settings->window(services.environment->calendar, now);
    reload->events = store.events(reload->window.start, reload->window.end);
    const ReloadWindow window = reload->window;
    store.reminders(window.start, window.end,
                    [reload = std::move(reload)](std::vector<EKReminderRef> reminders) mutable {
                        reload->reminders = std::move(reminders);
                        onMainQueue(std::move(reload), refresh);
                    });
}

}  // namespace

ReloadContext::ReloadContext(CalendarEventManager::Collaborators collaborators)
    : services(std::move(collaborators)),
      settings(*services.settings, *services.eventSettings),
      sharing(services.environment->calendar),
      conversions(*services.parser, services.environment->calendar),
      exclusions(services.environment->calendar) {}

void startReload(std::shared_ptr<ReloadContext> context, ReloadKind kind, std::function<void()> completion) {
    // Before anything is read: a change meanwhile makes the answer one that nobody shares.
    auto inputs = currentInputs(*context);
    const platform::Date now = context->services.environment->now();
    if (kind != ReloadKind::announced) {
        const auto wanted = kind == ReloadKind::quiet ? ReloadSharing::Wanted::anyReload
                                                      : ReloadSharing::Wanted::announcedReload;
        if (context->sharing.join(inputs, now, wanted, completion)) return;
    }
    auto reload = std::make_shared<Reload>();
    reload->shouldPostNotification = kind != ReloadKind::quiet;
    reload->round =
        context->sharing.begin(std::move(inputs), now, reload->shouldPostNotification, std::move(completion));
    reload->settings = context->settings.read();
    reload->context = std::move(context);
    run(std::move(reload));
}

void startReload(std::shared_ptr<ReloadContext> context, std::shared_ptr<const ReloadSettings> settings,
                 std::function<void()> completion) {
    auto reload = std::make_shared<Reload>();
    reload->round = context->sharing.beginApart(std::move(completion));
    reload->settings = std::move(settings);
    reload->context = std::move(context);
    run(std::move(reload));
}

}  // namespace hbr
