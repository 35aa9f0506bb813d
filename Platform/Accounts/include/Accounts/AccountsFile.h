#pragma once

#include <CalendarStore/Account.h>
#include <System/Environment.h>

#include <filesystem>
#include <functional>
#include <vector>

namespace platform {

/// The user's accounts in `accounts.toml` of the configuration directory (mode 0600): an array of tables
/// [[account]] with name, location, addresses, delegate, contents, kind. A bad entry is left out with a
/// diagnostic that names file and field. Writing keeps it, and every key that is none of these; where
/// accounts are added, changed or removed in the file's own order, comments and layout stay too. A file that
/// is not TOML is set aside before the first write; an empty one is deleted.
class AccountsFile {
  public:
    explicit AccountsFile(EnvironmentRef environment);

    std::filesystem::path path() const;
    std::vector<Account> load() const;
    /// False when it could not be written; the reason goes to the diagnostics. Takes a lock, so that two
    /// programs that add an account lose neither.
    bool update(const std::function<void(std::vector<Account>&)>& change);

  private:
    EnvironmentRef environment_;
};

}  // namespace platform
