#include <HbrCore/Scheduling/CalendarEventManager.h>

#include <HbrCore/Scheduling/UserCalendar.h>
#include <HbrCore/Stores/AggregatedEventStore.h>
#include <HbrCore/Stores/CustomRemindersStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <HbrUtils/CalendarItemReaders.h>
#include <HbrUtils/DateOperations.h>
#include <HbrUtils/TimeConstants.h>
#include <MxLogger/MxLogger.h>
#include <System/MainQueue.h>
#include <System/WallClockTimer.h>

#include <algorithm>
#include <string>
#include <utility>

#include "Reload.h"

namespace hbr {

namespace {

bool contains(const std::vector<std::string>& identifiers, const std::string& identifier) {
    return std::ranges::find(identifiers, identifier) != identifiers.end();
}

std::shared_ptr<void> startWallClockTimer(platform::Date first, double interval,
                                          std::function<void()> action) {
    return std::make_shared<platform::WallClockTimer>(first, interval, std::move(action));
}

/// The store's calendars as choices, without birthdays and subscribed holidays.
template <class Choice, class Complete>
std::vector<Choice> choices(const AggregatedEventStore& store, platform::EKEntityType type,
                            const std::vector<std::string>& active, const Complete& complete) {
    std::vector<Choice> list;
    for (const auto& calendar : store.calendars(type)) {
        if (calendar->type == platform::EKCalendarType::birthday || isSubscribedHolidayCalendar(*calendar))
            continue;
        Choice choice;
        choice.identifier = calendar->calendarIdentifier;
        choice.name = calendar->title;
        choice.color = calendar->color;
        choice.active = contains(active, calendar->calendarIdentifier);
        if (calendar->source) choice.accountName = calendar->source->title;
        complete(*calendar, choice);
        list.push_back(std::move(choice));
    }
    return list;
}

}  // namespace

struct CalendarEventManager::State : ReloadContext {
    using ReloadContext::ReloadContext;
};

/// What starts reloads by itself; ends before the rest of the manager.
struct CalendarEventManager::Watch {
    platform::NotificationCenter::Observation storeChange;
    platform::NotificationCenter::Observation remindersChange;
    std::shared_ptr<void> minuteTimer;
};

CalendarEventManager::CalendarEventManager(Collaborators collaborators, Lifetime lifetime)
    : state_(std::make_shared<State>(std::move(collaborators))), watch_(std::make_unique<Watch>()) {
    platform::NotificationCenter& center = state_->services.center;
    watch_->storeChange =
        center.observe(platform::eventStoreChangedNotification, [weak = std::weak_ptr<State>(state_)] {
            auto state = weak.lock();
            if (!state) return;
            MxLogger::debug(LogCategory::eventKit, "EKEventStoreChanged");
            ++state->changes;
            startReload(std::move(state), ReloadKind::announced);
        });
    watch_->remindersChange =
        center.observe(remindersChangedNotification, [weak = std::weak_ptr<State>(state_)] {
            auto state = weak.lock();
            if (!state) return;
            ++state->changes;
            startReload(std::move(state), ReloadKind::announced);
        });
    if (lifetime == Lifetime::longLived) {
        const platform::Environment& environment = *state_->services.environment;
        const platform::Date inTwoMinutes = environment.calendar.addingMinutes(environment.now(), 2);
        const auto& startTimer = state_->services.startTimer;
        watch_->minuteTimer = (startTimer ? startTimer : startWallClockTimer)(
            removingSeconds(inTwoMinutes, environment.calendar), MINUTE, [this] { rescheduleTimerFired(); });
        state_->services.aggregatedEventStore->startWatching();
    }
}

CalendarEventManager::~CalendarEventManager() = default;

void CalendarEventManager::reloadEvents(bool shouldPostNotification, std::function<void()> completion) {
    startReload(state_, shouldPostNotification ? ReloadKind::announced : ReloadKind::quiet,
                std::move(completion));
}

void CalendarEventManager::reloadEvents(const ReloadSettings& settings, std::function<void()> completion) {
    startReload(state_, std::make_shared<const ReloadSettings>(settings), std::move(completion));
}

void CalendarEventManager::reloadChangedSettings() {
    startReload(state_, ReloadKind::announcedIfNeeded);
}

std::shared_ptr<const ReloadSettings> CalendarEventManager::reloadSettings() const {
    return state_->settings.read();
}

std::shared_ptr<const EventLists> CalendarEventManager::lists() const {
    return state_->lists.load();
}

void CalendarEventManager::rescheduleTimerFired() {
    reloadEvents(true);
}

std::vector<Event> CalendarEventManager::allCachedEvents() const {
    return copied(lists()->all());
}
std::vector<Event> CalendarEventManager::allCachedUpcomingEvents() const {
    return copied(lists()->upcoming());
}
std::vector<Event> CalendarEventManager::allCachedCurrentEvents() const {
    return copied(lists()->underWay());
}
std::vector<Event> CalendarEventManager::currentEvents() const {
    return copied(lists()->current);
}
std::vector<Event> CalendarEventManager::scheduledEvents() const {
    return copied(lists()->scheduled);
}
std::vector<Event> CalendarEventManager::pendingEvents() const {
    return copied(lists()->pending);
}
std::vector<Event> CalendarEventManager::snoozedPastAppleReminderEvents() const {
    return copied(lists()->snoozedPastAppleReminders);
}
std::vector<Event> CalendarEventManager::pendingAppleReminderEvents() const {
    return copied(lists()->pendingAppleReminders);
}

std::vector<AlertInvocation> CalendarEventManager::invocations() const {
    return state_->alerts.scheduled();
}
std::vector<AlertInvocation> CalendarEventManager::snoozedInvocations() const {
    return state_->alerts.snoozed();
}

std::optional<Event> CalendarEventManager::cachedEvent(std::string_view id) const {
    const EventRef event = lists()->find(id);
    return event ? std::optional(*event) : std::nullopt;
}

bool CalendarEventManager::hasCalendarAccess() const {
    return state_->services.aggregatedEventStore->hasCalendarAccess();
}

bool CalendarEventManager::hasReminderAccess() const {
    return state_->services.aggregatedEventStore->hasReminderAccess();
}

std::optional<std::string> CalendarEventManager::accountEmailForEvent(std::string_view identifier) const {
    const auto event = state_->services.aggregatedEventStore->eventWithIdentifier(identifier);
    if (!event || !event->calendar) return std::nullopt;
    return ownerEmailAddress(*event->calendar);
}

void CalendarEventManager::activateAllCalendars() {
    std::vector<std::string> identifiers;
    for (UserCalendar& calendar : fetchCalendars())
        identifiers.push_back(std::move(calendar.identifier));
    state_->services.settings->setActiveCalendarIdentifiers(identifiers);
}

void CalendarEventManager::activateFirstCalendar() {
    std::vector<std::string> identifiers;
    auto calendars = fetchCalendars();
    if (!calendars.empty()) identifiers.push_back(std::move(calendars.front().identifier));
    state_->services.settings->setActiveCalendarIdentifiers(identifiers);
}

void CalendarEventManager::activateCalendar(const std::string& identifier) {
    UserSettingsStore& settings = *state_->services.settings;
    if (contains(settings.activeCalendarIdentifiers(), identifier)) return;
    settings.updateActiveCalendarIdentifiers([identifier](std::vector<std::string>& identifiers) {
        if (!contains(identifiers, identifier)) identifiers.push_back(identifier);
    });
    reloadEvents(true);
}

void CalendarEventManager::deactivateCalendar(const std::string& identifier) {
    state_->services.settings->updateActiveCalendarIdentifiers(
        [identifier](std::vector<std::string>& identifiers) { std::erase(identifiers, identifier); });
    reloadEvents(true);
}

std::vector<UserCalendar> CalendarEventManager::fetchCalendars() const {
    MxLogger::info(LogCategory::eventKit, "fetching calendars");
    auto list = choices<UserCalendar>(*state_->services.aggregatedEventStore, platform::EKEntityType::event,
                                      state_->services.settings->activeCalendarIdentifiers(),
                                      [](const platform::EKCalendar& calendar, UserCalendar& choice) {
                                          choice.isDelegate = isDelegate(calendar);
                                      });
    MxLogger::info(LogCategory::eventKit, "fetched " + std::to_string(list.size()) + " calendars");
    return list;
}

std::vector<UserReminderList> CalendarEventManager::fetchReminderLists() const {
    MxLogger::info(LogCategory::eventKit, "fetching reminder lists");
    auto list =
        choices<UserReminderList>(*state_->services.aggregatedEventStore, platform::EKEntityType::reminder,
                                  state_->services.settings->activeReminderListIdentifiers(),
                                  [](const platform::EKCalendar&, UserReminderList&) {});
    MxLogger::info(LogCategory::eventKit, "fetched " + std::to_string(list.size()) + " reminder lists");
    return list;
}

void CalendarEventManager::didHandleAlertInvocation(const AlertInvocation& invocation) {
    state_->alerts.remove(invocation);
    ++state_->changes;
}

void CalendarEventManager::snooze(const Event& event, std::int64_t minutes) {
    const double seconds = static_cast<double>(minutes) * MINUTE;
    const bool isMoved = event.type == Event::EventType::hbrReminder &&
                         state_->services.reminders->moveReminder(event.id, seconds);
    if (!isMoved) {
        state_->alerts.snooze({.date = state_->services.environment->now().addingTimeInterval(seconds),
                               .event = std::make_shared<const Event>(event),
                               .isSnooze = true});
        ++state_->changes;
    }
    reloadEvents(true);
}

void CalendarEventManager::snoozeUntilTimeOfEvent(const Event& event, std::function<void()> completion) {
    platform::MainQueue::shared().async([state = state_, event, completion = std::move(completion)] {
        if (event.startDate > state->services.environment->now()) {
            state->alerts.snooze({event.startDate, std::make_shared<const Event>(event), true});
            ++state->changes;
            startReload(state, ReloadKind::announced);
        }
        if (completion) completion();
    });
}

void CalendarEventManager::removeSnooze(const Event& event) {
    const auto removed = state_->alerts.removeSnooze(event.id);
    if (!removed) return;
    ++state_->changes;
    if (auto receiver = delegate()) receiver->didRemoveSnoozedInvocation(*removed);
}

void CalendarEventManager::restoreSnoozedInvocations(const std::vector<AlertInvocation>& invocations) {
    for (const AlertInvocation& invocation : invocations)
        state_->alerts.snooze(invocation);
    ++state_->changes;
}

std::shared_ptr<CalendarEventManagerDelegate> CalendarEventManager::delegate() const {
    return state_->delegate.load()->lock();
}

void CalendarEventManager::setDelegate(std::weak_ptr<CalendarEventManagerDelegate> delegate) {
    state_->delegate.store(std::move(delegate));
}

void CalendarEventManager::debug_printScheduledAlerts() const {
    const auto alerts = invocations();
    std::string text = "scheduled alerts (" + std::to_string(alerts.size()) + "):";
    for (const AlertInvocation& alert : alerts) {
        text += "\n" + alert.date.description() + ": " + alert.event->title.value_or("(unknown)");
    }
    MxLogger::debug(text + "\n-------------------");
}

void CalendarEventManager::debug_printCustomReminders() const {
    const auto reminders = state_->services.reminders->reminders();
    std::string text = "custom reminders (" + std::to_string(reminders.size()) + "):";
    for (const Reminder& reminder : reminders)
        text += "\n" + reminder.debugDescription();
    MxLogger::debug(text + "-------------------");
}

const AggregatedEventStore& CalendarEventManager::aggregatedEventStore() const {
    return *state_->services.aggregatedEventStore;
}

}  // namespace hbr
