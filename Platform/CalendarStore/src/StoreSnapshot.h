#pragma once

#include "CollectionIndex.h"

#include <CalendarStore/EKEventStore.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// One collection as it was read.
struct Collection {
    std::filesystem::path location;
    EKCalendarRef events;
    EKCalendarRef reminders;
    std::vector<std::shared_ptr<const ScannedFile>> files;
    std::shared_ptr<const CollectionIndex> index;
};

struct KnownAccount {
    Account account;
    /// Why it cannot be read; empty when it can.
    std::string problem;

    bool readable() const { return problem.empty(); }
};

struct SnapshotAccount : KnownAccount {
    std::shared_ptr<const EKSource> source;
    std::vector<Collection> collections;
    std::vector<std::filesystem::path> watched;
};

/// Everything the store knows at one time. Constant once made; changes make a new one.
struct StoreSnapshot {
    /// Every account of the sources at that time.
    std::vector<Account> listed;
    /// Those of this store; of the others only whether they can be read.
    std::vector<SnapshotAccount> accounts;
    std::vector<KnownAccount> others;
    std::map<std::string, const Collection*, std::less<>> byCalendar;

    StoreSnapshot() = default;
    StoreSnapshot(const StoreSnapshot&) = delete;
    StoreSnapshot& operator=(const StoreSnapshot&) = delete;

    bool anyReadable() const;
    bool hasAccounts() const { return !accounts.empty() || !others.empty(); }
    /// Nothing that a question could show differs.
    bool shows(const StoreSnapshot& other) const;
};

}  // namespace platform
