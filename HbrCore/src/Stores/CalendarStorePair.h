#pragma once

#include <CalendarStore/EKEventStore.h>
#include <System/Environment.h>
#include <System/NotificationCenter.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace hbr {

/// The store of the own accounts and, once it was opened, the one of the delegated accounts. Safe from any
/// thread.
class CalendarStorePair {
  public:
    CalendarStorePair(platform::EnvironmentRef environment, platform::NotificationCenter& center,
                      platform::CalendarSourcesRef sources);

    platform::EKEventStore& own() { return own_; }
    /// nullptr before `openDelegates`.
    std::shared_ptr<platform::EKEventStore> delegates() const;
    /// Opens the store of the delegated accounts, in place of the one opened before.
    void openDelegates();

    void refresh();
    /// From now on, also of delegates opened later.
    void startWatching();

    /// Of either store; nullptr for an unknown one. Kept until a store changes.
    platform::EKCalendarRef calendar(std::string_view identifier);
    /// Another number after every change of what the stores answer.
    std::uint64_t revision() const;

  private:
    void emptyCache();

    const platform::EnvironmentRef environment_;
    platform::NotificationCenter& center_;
    const platform::CalendarSourcesRef sources_;
    platform::EKEventStore own_;

    mutable std::mutex mutex_;
    std::shared_ptr<platform::EKEventStore> delegates_;
    bool isWatching_ = false;
    std::map<std::string, platform::EKCalendarRef, std::less<>> calendars_;
    std::uint64_t formerDelegatesRevisions_ = 0;
    /// Counts the emptyings, so that a lookup under way does not put an old calendar back.
    std::uint64_t cacheGeneration_ = 0;

    platform::NotificationCenter::Observation storeChange_;
};

}  // namespace hbr
