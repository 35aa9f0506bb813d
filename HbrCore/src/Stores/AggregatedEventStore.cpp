#include <HbrCore/Stores/AggregatedEventStore.h>

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Stores/EventSettingsStore.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <MxLogger/MxLogger.h>

#include <algorithm>
#include <cstdint>
#include <future>
#include <iterator>
#include <set>
#include <string>
#include <tuple>
#include <utility>

#include "Events/EventOrder.h"
#include "Stores/CalendarStorePair.h"

namespace hbr {

using platform::EKAuthorizationStatus;
using platform::EKCalendarRef;
using platform::EKEntityType;
using platform::EKEventRef;
using platform::EKEventStore;
using platform::EKReminderRef;

namespace {

/// Two events of the two stores with equal keys are the same occurrence.
auto occurrenceKey(const platform::EKEvent& event) {
    const auto seconds = [](platform::Date date) { return date.timeIntervalSinceReferenceDate(); };
    const auto occurrence =
        event.occurrenceDate ? std::optional(seconds(*event.occurrenceDate)) : std::nullopt;
    return std::tuple(event.title, seconds(event.startDate), seconds(event.endDate), occurrence,
                      event.isDetached, event.isAllDay);
}

const Event& eventOf(const Event& event) {
    return event;
}
const Event& eventOf(const EventRef& event) {
    return *event;
}

/// Those inside their alert period, by start.
template <class Events>
Events pendingOnly(Events events, const AggregatedEventStore::Choices& choices, platform::Date now) {
    std::erase_if(events, [&](const auto& one) {
        const Event& event = eventOf(one);
        return !isPending(event, choices.timeOffset,
                          EventSettingsStore::find(choices.eventSettings, event.id), now);
    });
    sortByStart(events);
    return events;
}

/// Of the events that count, as they were given.
EventRefs made(const std::vector<EKEventRef>& records, const AttendanceSettings& attendance,
               const AggregatedEventStore::MakeEvent& make) {
    EventRefs events;
    for (const auto& record : records) {
        if (shouldSchedule(*record, attendance)) events.push_back(make(record));
    }
    return events;
}

}  // namespace

EventKitError::EventKitError(Code code)
    : std::runtime_error("access to the calendars is not granted"), code_(code) {}

struct AggregatedEventStore::State {
    explicit State(Collaborators given)
        : environment(std::move(given.environment)),
          center(given.center),
          settings(std::move(given.settings)),
          eventSettings(std::move(given.eventSettings)),
          parser(std::move(given.parser)),
          stores(environment, center, std::move(given.sources)) {}

    platform::EnvironmentRef environment;
    platform::NotificationCenter& center;
    std::shared_ptr<UserSettingsStore> settings;
    std::shared_ptr<EventSettingsStore> eventSettings;
    std::shared_ptr<const VideoConferenceLinkParser> parser;
    CalendarStorePair stores;

    MakeEvent make() const {
        return [this](const EKEventRef& record) {
            return std::make_shared<const Event>(Event::fromCalendarEvent(*record, *parser));
        };
    }

    std::vector<EKCalendarRef> resolved(const std::vector<std::string>& identifiers) {
        std::vector<EKCalendarRef> calendars;
        calendars.reserve(identifiers.size());
        for (const std::string& identifier : identifiers) {
            if (auto found = stores.calendar(identifier)) calendars.push_back(std::move(found));
        }
        return calendars;
    }

    template <class Completion>
    void requestAccess(EKEntityType type, const Completion& completion) {
        if (environment->platformVersion < platform::PlatformVersion{14, 0, 0}) {
            stores.own().requestAccess(type, completion);
        } else if (type == EKEntityType::event) {
            stores.own().requestFullAccessToEvents(completion);
        } else {
            stores.own().requestFullAccessToReminders(completion);
        }
    }
};

AggregatedEventStore::AggregatedEventStore(Collaborators collaborators)
    : state_(std::make_unique<State>(std::move(collaborators))) {}

AggregatedEventStore::~AggregatedEventStore() = default;

bool AggregatedEventStore::hasCalendarAccess() const {
    return state_->stores.own().authorizationStatus(EKEntityType::event) == EKAuthorizationStatus::fullAccess;
}

bool AggregatedEventStore::hasReminderAccess() const {
    return state_->stores.own().authorizationStatus(EKEntityType::reminder) ==
           EKAuthorizationStatus::fullAccess;
}

void AggregatedEventStore::requestCalendarAccess(const AccessCompletion& completion) {
    MxLogger::info(LogCategory::eventKit, "Requesting Calendar access");
    state_->requestAccess(EKEntityType::event, [this, completion](bool, std::exception_ptr error) {
        if (error) return completion(error);
        if (!hasCalendarAccess()) {
            MxLogger::warning(LogCategory::eventKit, "No Calendar access. Showing permission alert");
            return completion(std::make_exception_ptr(EventKitError(EventKitError::Code::accessNotGranted)));
        }
        MxLogger::info(LogCategory::eventKit, "Calendar permission granted");
        state_->stores.openDelegates();
        state_->center.post(grantedPermissionNotification);
        completion(nullptr);
    });
}

void AggregatedEventStore::requestReminderAccess(const AccessCompletion& completion) {
    MxLogger::info(LogCategory::eventKit, "Requesting Reminders access");
    state_->requestAccess(EKEntityType::reminder, [this, completion](bool, std::exception_ptr error) {
        if (error) return completion(error);
        if (hasReminderAccess()) {
            MxLogger::info(LogCategory::eventKit, "Reminder permission granted");
        } else {
            MxLogger::warning(LogCategory::eventKit, "No Reminder access.");
        }
        state_->center.post(grantedPermissionNotification);
        completion(nullptr);
    });
}

void AggregatedEventStore::refreshData() {
    state_->stores.refresh();
}

void AggregatedEventStore::startWatching() {
    state_->stores.startWatching();
}

EKCalendarRef AggregatedEventStore::calendarWithIdentifier(std::string_view identifier) const {
    return state_->stores.calendar(identifier);
}

std::vector<EKCalendarRef> AggregatedEventStore::calendars(EKEntityType type) const {
    auto calendars = state_->stores.own().calendars(type);
    if (auto delegated = state_->stores.delegates()) {
        std::set<std::string_view> known;
        for (const auto& calendar : calendars)
            known.insert(calendar->calendarIdentifier);
        for (auto& calendar : delegated->calendars(type)) {
            if (known.insert(calendar->calendarIdentifier).second) calendars.push_back(calendar);
        }
    }
    return calendars;
}

std::vector<EKCalendarRef> AggregatedEventStore::activeCalendars() const {
    return state_->resolved(state_->settings->activeCalendarIdentifiers());
}

std::vector<EKCalendarRef> AggregatedEventStore::activeReminderCalendars() const {
    return state_->resolved(state_->settings->activeReminderListIdentifiers());
}

EKEventRef AggregatedEventStore::eventWithIdentifier(std::string_view identifier) const {
    if (auto event = state_->stores.own().eventWithIdentifier(identifier)) return event;
    auto delegated = state_->stores.delegates();
    return delegated ? delegated->eventWithIdentifier(identifier) : nullptr;
}

EKReminderRef AggregatedEventStore::reminderWithIdentifier(std::string_view identifier) const {
    return state_->stores.own().reminderWithIdentifier(identifier);
}

std::vector<EKEventRef> AggregatedEventStore::events(platform::Date start, platform::Date end) const {
    const auto calendars = activeCalendars();
    if (calendars.empty()) return {};
    auto events = state_->stores.own().events(state_->stores.own().predicateForEvents(start, end, calendars));
    const auto delegated = state_->stores.delegates();
    if (!delegated) return events;

    std::set<decltype(occurrenceKey(*events.front()))> known;
    for (const auto& event : events)
        known.insert(occurrenceKey(*event));
    for (auto& event : delegated->events(delegated->predicateForEvents(start, end, calendars))) {
        if (known.insert(occurrenceKey(*event)).second) events.push_back(std::move(event));
    }
    return events;
}

void AggregatedEventStore::reminders(platform::Date start, platform::Date end,
                                     RemindersCompletion completion) const {
    auto lists = activeReminderCalendars();
    if (lists.empty()) return completion({});
    const EKEventStore& store = state_->stores.own();
    store.fetchReminders(store.predicateForIncompleteReminders(start, end, std::move(lists)),
                         std::move(completion));
}

std::vector<EKEventRef> AggregatedEventStore::eventsOfAllCalendars(platform::Date start,
                                                                   platform::Date end) const {
    const auto all = [&](const EKEventStore& store) {
        return store.events(store.predicateForEvents(start, end, store.calendars(EKEntityType::event)));
    };
    auto events = all(state_->stores.own());
    if (const auto delegated = state_->stores.delegates())
        std::ranges::move(all(*delegated), std::back_inserter(events));
    return events;
}

std::vector<EKReminderRef> AggregatedEventStore::remindersOfAllLists() const {
    const auto all = [](const EKEventStore& store) {
        std::promise<std::vector<EKReminderRef>> tasks;
        store.fetchReminders(store.predicateForReminders(store.calendars(EKEntityType::reminder)),
                             [&](std::vector<EKReminderRef> found) { tasks.set_value(std::move(found)); });
        return tasks.get_future().get();
    };
    auto tasks = all(state_->stores.own());
    if (const auto delegated = state_->stores.delegates())
        std::ranges::move(all(*delegated), std::back_inserter(tasks));
    return tasks;
}

AggregatedEventStore::Choices AggregatedEventStore::choices() const {
    return {.attendance = *state_->settings,
            .timeOffset = static_cast<double>(state_->settings->timeOffsetSeconds()),
            .eventSettings = state_->eventSettings->customSettings()};
}

EventRefs AggregatedEventStore::currentEvents(platform::Date now, const Choices& choices,
                                              const MakeEvent& make) const {
    EventRefs current = made(events(now, now), choices.attendance, make);
    sortByStart(current);
    return current;
}

EventRefs AggregatedEventStore::pendingEvents(platform::Date now, const Choices& choices,
                                              const MakeEvent& make) const {
    const auto records = events(now, now.addingTimeInterval(pendingWindow));
    return pendingOnly(made(records, choices.attendance, make), choices, now);
}

std::vector<Event> AggregatedEventStore::currentEvents(platform::Date now, const Choices& choices) const {
    return copied(currentEvents(now, choices, state_->make()));
}

std::vector<Event> AggregatedEventStore::pendingEvents(platform::Date now, const Choices& choices) const {
    return copied(pendingEvents(now, choices, state_->make()));
}

void AggregatedEventStore::pendingAppleReminderEvents(platform::Date now, Choices choices,
                                                      EventsCompletion completion) const {
    // Holds no store: a store's own worker thread must not be the last to release it.
    auto select = [environment = state_->environment, choices = std::move(choices), now,
                   completion = std::move(completion)](const std::vector<EKReminderRef>& reminders) {
        std::vector<Event> candidates;
        for (const auto& reminder : reminders) {
            if (!shouldSchedule(*reminder)) continue;
            if (auto event = Event::fromAppleReminder(*reminder, environment->calendar)) {
                candidates.push_back(*std::move(event));
            }
        }
        completion(pendingOnly(std::move(candidates), choices, now));
    };
    reminders(now, now.addingTimeInterval(pendingWindow), std::move(select));
}

bool AggregatedEventStore::hasDelegatedAccounts() const {
    return !state_->stores.own().delegateSources().empty();
}

std::uint64_t AggregatedEventStore::revision() const {
    return state_->stores.revision();
}

std::vector<platform::AccountReport> AggregatedEventStore::report() const {
    auto report = state_->stores.own().report();
    if (auto delegated = state_->stores.delegates()) {
        std::ranges::move(delegated->report(), std::back_inserter(report));
    }
    return report;
}

}  // namespace hbr
