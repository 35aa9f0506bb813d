#pragma once

#include "ItemScanner.h"
#include "StoreSnapshot.h"

#include <CalendarFiles/FileCache.h>
#include <CalendarStore/CalendarSources.h>
#include <System/Environment.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace platform {

/// Reads accounts and their texts into snapshots; what did not change is taken over from the snapshot before.
/// Not for several threads.
class StoreLoader {
  public:
    /// Loads the user's own accounts, or only those that `delegates` name.
    StoreLoader(EnvironmentRef environment, CalendarSourcesRef sources,
                std::optional<std::vector<std::shared_ptr<const EKSource>>> delegates);

    std::shared_ptr<const StoreSnapshot> load(const StoreSnapshot* previous);

  private:
    bool isMine(const Account& account) const;
    SnapshotAccount loadAccount(const Account& account, const StoreSnapshot* previous,
                                std::set<std::string>& identifiers);
    Collection loadCollection(const SnapshotAccount& account, const CalendarCollection& found,
                              const StoreSnapshot* previous, std::set<std::string>& identifiers,
                              std::set<std::string>& colors);

    EnvironmentRef environment_;
    CalendarSourcesRef sources_;
    std::optional<std::vector<std::shared_ptr<const EKSource>>> delegates_;
    ZonePool zones_;
    FileCache<ScannedFile> files_;
};

}  // namespace platform
