#pragma once

#include <System/DefaultsDomain.h>
#include <System/Environment.h>

#include <map>
#include <string>
#include <vector>

namespace hbr {

/// What the last setup added, so that it can be taken back.
struct SetupRecord {
    std::vector<std::string> accounts;
    std::vector<std::string> calendars;
    std::vector<std::string> reminderLists;
    /// Addresses that accounts got which were there before, by their names.
    std::map<std::string, std::vector<std::string>> addresses;

    bool empty() const {
        return accounts.empty() && calendars.empty() && reminderLists.empty() && addresses.empty();
    }
};

/// What the companion remembers for itself, in `companion.plist` of the data directory: which calendars and
/// task lists the user has decided about (every other one is new), and the last setup. Changes are made
/// under the file's lock.
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
