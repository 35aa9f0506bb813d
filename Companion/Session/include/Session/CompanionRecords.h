#pragma once

#include <System/DefaultsDomain.h>
#include <System/Environment.h>

#include <map>
#include <string>
#include <vector>

namespace hbr {

/// What the last setup added, so that it can be undone.
struct SetupRecord {
    std::vector<std::string> accounts;
    std::vector<std::string> calendars;
    std::vector<std::string> reminderLists;
    /// Addresses that were added to existing accounts, by the account's name.
    std::map<std::string, std::vector<std::string>> addresses;

    bool empty() const {
        return accounts.empty() && calendars.empty() && reminderLists.empty() && addresses.empty();
    }
};

/// The companion's own records, in `companion.plist` of the data directory: which calendars and task lists
/// the user has decided about (all others are new), and the last setup. Changes are made under the file's
/// lock.
class CompanionRecords {
  public:
    explicit CompanionRecords(const platform::Environment& environment);

    std::vector<std::string> decidedIdentifiers() const;
    void addDecided(const std::vector<std::string>& identifiers);
    void removeDecided(const std::vector<std::string>& identifiers);

    SetupRecord lastSetup() const;
    void setLastSetup(const SetupRecord& record);

  private:
    platform::DefaultsDomain domain_;
};

}  // namespace hbr
