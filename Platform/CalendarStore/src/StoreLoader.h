#pragma once

#include "ItemScanner.h"
#include "StoreSnapshot.h"

#include <Foundation/Environment.h>
#include <Foundation/FileCache.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace platform {

/// Reads accounts and files into snapshots; what did not change is taken over from the snapshot before.
/// Not for several threads.
class StoreLoader {
  public:
    /// Without sources: the user's own accounts; with sources: the accounts that they name.
    StoreLoader(EnvironmentRef environment,
                std::optional<std::vector<std::shared_ptr<const EKSource>>> sources);

    std::shared_ptr<const StoreSnapshot> load(const StoreSnapshot* previous);
    /// False when `accounts.toml` lists other accounts than it did for the snapshot. Any thread.
    bool knowsAccountsOf(const StoreSnapshot& snapshot) const {
        return accountsFile_.load() == snapshot.listed;
    }
    /// Files and folders whose changes can change a snapshot.
    static std::vector<std::filesystem::path> watchedPaths(const Environment& environment,
                                                           const StoreSnapshot& snapshot);

  private:
    bool isMine(const Account& account) const;
    SnapshotAccount loadAccount(FoundAccount found, const StoreSnapshot* previous,
                                std::set<std::string>& identifiers);
    Collection loadCollection(const SnapshotAccount& account, const FoundCollection& found,
                              const StoreSnapshot* previous, std::set<std::string>& identifiers,
                              std::set<std::string>& colors);

    EnvironmentRef environment_;
    std::optional<std::vector<std::shared_ptr<const EKSource>>> sources_;
    AccountsFile accountsFile_;
    ZonePool zones_;
    FileCache<ScannedFile> files_;
};

/// "displayname" and "color" of a folder, or what a single file says of itself.
struct CollectionNaming {
    std::optional<std::string> title;
    std::optional<Color> color;
};
CollectionNaming namingOf(const FoundCollection& found,
                          const std::vector<std::shared_ptr<const ScannedFile>>& files);

}  // namespace platform
