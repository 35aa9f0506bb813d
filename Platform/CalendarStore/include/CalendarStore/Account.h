#pragma once

#include <Foundation/Environment.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A source that the user added: a file, a folder of .ics files or a tree of such folders.
struct Account {
    /// What its collections are beside ordinary calendars.
    enum class Kind { ordinary, birthdays, holidays };
    enum class Contents { calendars, contacts };

    std::string name = {};
    std::filesystem::path location = {};
    /// The user's own addresses there, without "mailto:".
    std::vector<std::string> addresses = {};
    bool isDelegate = false;
    Contents contents = Contents::calendars;
    Kind kind = Kind::ordinary;

    friend bool operator==(const Account&, const Account&) = default;
};

/// The user's accounts in `accounts.toml` of the configuration directory (mode 0600): an array of tables
/// [[account]] with name, location, addresses, delegate, contents, kind. A bad entry is left out with a
/// diagnostic that names file and field. Writing keeps it, and every key that is none of these; where
/// accounts are added, changed or removed in the file's own order, comments and layout stay too. A file that
/// is no TOML is set aside before the first write; one that holds nothing any more is removed.
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
