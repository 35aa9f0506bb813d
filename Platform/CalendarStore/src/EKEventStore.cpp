#include <CalendarStore/EKEventStore.h>

#include "SerialWorker.h"
#include "StoreLoader.h"

#include <System/MainQueue.h>

#include <algorithm>
#include <atomic>
#include <mutex>
#include <optional>
#include <set>
#include <tuple>

namespace platform {

struct EKEventStore::State {
    State(EnvironmentRef world, NotificationCenter& notificationCenter, CalendarSourcesRef from,
          std::optional<std::vector<std::shared_ptr<const EKSource>>> delegates)
        : environment(std::move(world)),
          center(notificationCenter),
          sources(std::move(from)),
          loader(environment, sources, std::move(delegates)) {}

    /// The watch hands work to the worker, whose work starts watches: no new watch, then the one there is
    /// stopped, then the worker.
    ~State() {
        std::shared_ptr<void> stopped;
        {
            std::lock_guard lock(watchMutex);
            closing = true;
            stopped = std::move(watching);
        }
        stopped.reset();
        worker.stop();
    }
    State(const State&) = delete;
    State& operator=(const State&) = delete;

    /// Read with the first question.
    /// Keep it while reading from it: a worker replaces it at any time.
    std::shared_ptr<const StoreSnapshot> snapshot() {
        {
            std::lock_guard lock(snapshotMutex);
            if (current) return current;
        }
        std::lock_guard loading(loadMutex);
        {
            std::lock_guard lock(snapshotMutex);
            if (current) return current;
        }
        auto loaded = loader.load(nullptr);
        std::lock_guard lock(snapshotMutex);
        current = loaded;
        return loaded;
    }

    /// True when something shows differently now. What was never read is read, which shows nothing new.
    bool reload() {
        {
            std::unique_lock lock(snapshotMutex);
            if (!current) {
                lock.unlock();
                snapshot();
                return false;
            }
        }
        std::lock_guard loading(loadMutex);
        // What another reload put in place meanwhile counts: against anything older, files that are back as
        // they were would look unchanged.
        std::shared_ptr<const StoreSnapshot> before;
        {
            std::lock_guard lock(snapshotMutex);
            before = current;
        }
        auto loaded = loader.load(before.get());
        const bool changed = !loaded->shows(*before);
        if (changed) {
            std::lock_guard lock(snapshotMutex);
            current = std::move(loaded);
            ++revision;
        }
        return changed;
    }

    void reloadAndAnnounce() {
        if (reload()) announce();
    }

    void announce() {
        worker.async([this] { center.post(eventStoreChangedNotification); });
    }

    /// On the worker: looks again, and watches what there is to watch now. What changes in a new folder
    /// before it is watched is found by the next look.
    void changedOutside() {
        do {
            if (reload()) center.post(eventStoreChangedNotification);
        } while (watch());
    }

    /// True when something is watched that was not before.
    bool watch() {
        std::vector<std::filesystem::path> wanted;
        const auto known = snapshot();
        for (const auto& account : known->accounts)
            wanted.insert(wanted.end(), account.watched.begin(), account.watched.end());
        std::lock_guard lock(watchMutex);
        if (closing || watched == wanted) return false;
        watched = std::move(wanted);
        watching.reset();
        watching = sources->watch(*watched, [this] { worker.async([this] { changedOutside(); }); });
        return true;
    }

    EnvironmentRef environment;
    NotificationCenter& center;
    CalendarSourcesRef sources;
    std::mutex loadMutex;
    StoreLoader loader;
    std::mutex snapshotMutex;
    std::shared_ptr<const StoreSnapshot> current;
    std::atomic<std::uint64_t> revision = 0;
    std::mutex watchMutex;
    std::optional<std::vector<std::filesystem::path>> watched;
    /// What the sources gave for it.
    std::shared_ptr<void> watching;
    bool closing = false;
    SerialWorker worker;
};

EKEventStore::EKEventStore(EnvironmentRef environment, NotificationCenter& center, CalendarSourcesRef sources)
    : state_(std::make_shared<State>(std::move(environment), center, std::move(sources), std::nullopt)) {}

EKEventStore::EKEventStore(EnvironmentRef environment, NotificationCenter& center, CalendarSourcesRef sources,
                           std::vector<std::shared_ptr<const EKSource>> delegates)
    : state_(std::make_shared<State>(std::move(environment), center, std::move(sources),
                                     std::move(delegates))) {}

EKEventStore::~EKEventStore() {
    // Released from a notification on its own worker, which cannot join itself.
    if (state_->worker.isCurrent()) MainQueue::shared().async([state = std::move(state_)] {});
}

EKAuthorizationStatus EKEventStore::authorizationStatus(EKEntityType) const {
    const auto snapshot = state_->snapshot();
    if (snapshot->anyReadable()) return EKAuthorizationStatus::fullAccess;
    return snapshot->hasAccounts() ? EKAuthorizationStatus::denied : EKAuthorizationStatus::notDetermined;
}

void EKEventStore::requestAccess(EKEntityType type, const AccessCompletion& completion) {
    const auto known = state_->snapshot();
    if (!known->anyReadable() || state_->sources->accounts() != known->listed) state_->reloadAndAnnounce();
    if (completion) completion(authorizationStatus(type) == EKAuthorizationStatus::fullAccess, nullptr);
}

void EKEventStore::requestFullAccessToEvents(const AccessCompletion& completion) {
    requestAccess(EKEntityType::event, completion);
}

void EKEventStore::requestFullAccessToReminders(const AccessCompletion& completion) {
    requestAccess(EKEntityType::reminder, completion);
}

void EKEventStore::refreshSourcesIfNecessary() {
    state_->reloadAndAnnounce();
}

void EKEventStore::startWatching() {
    // What changed after it was read and before it was watched is found by another look.
    if (state_->watch()) state_->worker.async([state = state_.get()] { state->changedOutside(); });
}

std::vector<std::shared_ptr<const EKSource>> EKEventStore::delegateSources() const {
    std::vector<std::shared_ptr<const EKSource>> sources;
    const auto snapshot = state_->snapshot();
    for (const auto& other : snapshot->others) {
        EKSource source{other.account.name, true, {}};
        for (const auto& address : other.account.addresses)
            source.ownerAddresses.push_back("mailto:" + address);
        sources.push_back(std::make_shared<const EKSource>(std::move(source)));
    }
    return sources;
}

std::vector<EKCalendarRef> EKEventStore::calendars(EKEntityType type) const {
    std::vector<EKCalendarRef> result;
    const auto snapshot = state_->snapshot();
    for (const auto& account : snapshot->accounts) {
        for (const auto& collection : account.collections) {
            const auto& calendar = type == EKEntityType::event ? collection.events : collection.reminders;
            if (calendar) result.push_back(calendar);
        }
    }
    return result;
}

EKCalendarRef EKEventStore::calendarWithIdentifier(std::string_view identifier) const {
    const auto snapshot = state_->snapshot();
    const auto known = snapshot->byCalendar.find(identifier);
    if (known == snapshot->byCalendar.end()) return nullptr;
    const auto& collection = *known->second;
    const bool isEvents = collection.events && collection.events->calendarIdentifier == identifier;
    return isEvents ? collection.events : collection.reminders;
}

EKEventRef EKEventStore::eventWithIdentifier(std::string_view identifier) const {
    const auto snapshot = state_->snapshot();
    for (const auto& account : snapshot->accounts) {
        for (const auto& collection : account.collections) {
            if (!collection.events) continue;
            if (auto event = collection.index->event(std::string(identifier), collection.events))
                return event;
        }
    }
    return nullptr;
}

EKReminderRef EKEventStore::reminderWithIdentifier(std::string_view identifier) const {
    const auto now = state_->environment->now();
    const auto snapshot = state_->snapshot();
    for (const auto& account : snapshot->accounts) {
        for (const auto& collection : account.collections) {
            if (!collection.reminders) continue;
            auto task = collection.index->task(std::string(identifier), now, collection.reminders);
            if (task) return task;
        }
    }
    return nullptr;
}

EKPredicate EKEventStore::predicateForEvents(Date start, Date end,
                                             std::vector<EKCalendarRef> calendars) const {
    return {EKEntityType::event, start, end, std::move(calendars), false};
}

EKPredicate EKEventStore::predicateForIncompleteReminders(Date dueStart, Date dueEnd,
                                                          std::vector<EKCalendarRef> calendars) const {
    return {EKEntityType::reminder, dueStart, dueEnd, std::move(calendars), false};
}

EKPredicate EKEventStore::predicateForReminders(std::vector<EKCalendarRef> calendars) const {
    return {EKEntityType::reminder, {}, {}, std::move(calendars), true};
}

std::vector<EKEventRef> EKEventStore::events(const EKPredicate& predicate) const {
    std::vector<EKEventRef> result;
    if (predicate.entityType != EKEntityType::event || predicate.end < predicate.start) return result;
    const auto snapshot = state_->snapshot();
    std::set<const Collection*> asked;
    for (const auto& calendar : predicate.calendars) {
        const auto known =
            calendar ? snapshot->byCalendar.find(calendar->calendarIdentifier) : snapshot->byCalendar.end();
        if (known == snapshot->byCalendar.end()) continue;
        const auto& collection = *known->second;
        const bool isEvents =
            collection.events && collection.events->calendarIdentifier == calendar->calendarIdentifier;
        if (!isEvents || !asked.insert(&collection).second) continue;
        collection.index->appendEvents(predicate.start, predicate.end, collection.events, result);
    }
    std::sort(result.begin(), result.end(), [](const EKEventRef& a, const EKEventRef& b) {
        if (a->startDate != b->startDate) return a->startDate < b->startDate;
        return std::tie(a->calendar->calendarIdentifier, a->eventIdentifier) <
               std::tie(b->calendar->calendarIdentifier, b->eventIdentifier);
    });
    return result;
}

void EKEventStore::fetchReminders(const EKPredicate& predicate,
                                  std::function<void(std::vector<EKReminderRef>)> completion) const {
    // The worker's work never outlives the state that owns the worker.
    state_->worker.async([state = state_.get(), predicate, completion = std::move(completion)] {
        std::vector<EKReminderRef> result;
        const auto snapshot = state->snapshot();
        const auto now = state->environment->now();
        std::set<const Collection*> asked;
        for (const auto& calendar : predicate.calendars) {
            const auto known = calendar ? snapshot->byCalendar.find(calendar->calendarIdentifier)
                                        : snapshot->byCalendar.end();
            if (known == snapshot->byCalendar.end() || !known->second->reminders) continue;
            if (known->second->reminders->calendarIdentifier != calendar->calendarIdentifier) continue;
            if (!asked.insert(known->second).second) continue;
            const auto& index = *known->second->index;
            if (predicate.wantsEveryTask) {
                index.appendTasks(now, known->second->reminders, result);
            } else {
                index.appendOpenTasks(predicate.start, predicate.end, now, known->second->reminders, result);
            }
        }
        std::sort(result.begin(), result.end(), [](const EKReminderRef& a, const EKReminderRef& b) {
            if (a->dueDate.has_value() != b->dueDate.has_value()) return a->dueDate.has_value();
            if (a->dueDate && *a->dueDate != *b->dueDate) return *a->dueDate < *b->dueDate;
            return std::tie(a->calendar->calendarIdentifier, a->calendarItemIdentifier) <
                   std::tie(b->calendar->calendarIdentifier, b->calendarItemIdentifier);
        });
        if (completion) completion(std::move(result));
    });
}

std::vector<AccountReport> EKEventStore::report() const {
    std::vector<AccountReport> reports;
    const auto snapshot = state_->snapshot();
    for (const auto& account : snapshot->accounts) {
        AccountReport report{account.account, account.readable(), account.problem, {}};
        for (const auto& collection : account.collections) {
            report.collections.push_back({account.account.name, collection.location, collection.events,
                                          collection.reminders, collection.files.size(),
                                          collection.index->eventCount(), collection.index->taskCount()});
        }
        reports.push_back(std::move(report));
    }
    return reports;
}

std::uint64_t EKEventStore::revision() const {
    return state_->revision;
}

}  // namespace platform
