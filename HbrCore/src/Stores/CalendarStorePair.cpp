#include "Stores/CalendarStorePair.h"

#include <utility>

namespace hbr {

using platform::EKCalendarRef;
using platform::EKEventStore;

CalendarStorePair::CalendarStorePair(platform::EnvironmentRef environment,
                                     platform::NotificationCenter& center,
                                     platform::CalendarSourcesRef sources)
    : environment_(std::move(environment)),
      center_(center),
      sources_(std::move(sources)),
      own_(environment_, center_, sources_),
      storeChange_(center_.observe(platform::eventStoreChangedNotification, [this] { emptyCache(); })) {}

std::shared_ptr<EKEventStore> CalendarStorePair::delegates() const {
    std::lock_guard lock(mutex_);
    return delegates_;
}

void CalendarStorePair::emptyCache() {
    std::lock_guard lock(mutex_);
    calendars_.clear();
    ++cacheGeneration_;
}

void CalendarStorePair::openDelegates() {
    auto store = std::make_shared<EKEventStore>(environment_, center_, sources_, own_.delegateSources());
    std::unique_lock lock(mutex_);
    if (isWatching_) store->startWatching();
    delegates_.swap(store);
    // So that the sum of the revisions never comes back to an old one.
    formerDelegatesRevisions_ += 1 + (store ? store->revision() : 0);
    // The new store has read the delegated calendars again.
    calendars_.clear();
    ++cacheGeneration_;
    // The old store ends outside the lock: its end waits for a notification that may want the cache.
    lock.unlock();
}

void CalendarStorePair::refresh() {
    own_.refreshSourcesIfNecessary();
    if (auto delegated = delegates()) delegated->refreshSourcesIfNecessary();
}

void CalendarStorePair::startWatching() {
    {
        std::lock_guard lock(mutex_);
        if (std::exchange(isWatching_, true)) return;
    }
    own_.startWatching();
    if (auto delegated = delegates()) delegated->startWatching();
}

EKCalendarRef CalendarStorePair::calendar(std::string_view identifier) {
    std::shared_ptr<EKEventStore> delegated;
    std::uint64_t generation = 0;
    {
        std::lock_guard lock(mutex_);
        if (auto cached = calendars_.find(identifier); cached != calendars_.end()) return cached->second;
        delegated = delegates_;
        generation = cacheGeneration_;
    }
    EKCalendarRef found = own_.calendarWithIdentifier(identifier);
    if (!found && delegated) found = delegated->calendarWithIdentifier(identifier);
    if (found) {
        std::lock_guard lock(mutex_);
        if (generation == cacheGeneration_) calendars_.emplace(identifier, found);
    }
    return found;
}

std::uint64_t CalendarStorePair::revision() const {
    std::shared_ptr<EKEventStore> delegated;
    std::uint64_t revision = own_.revision();
    {
        std::lock_guard lock(mutex_);
        delegated = delegates_;
        revision += formerDelegatesRevisions_;
    }
    return delegated ? revision + delegated->revision() : revision;
}

}  // namespace hbr
