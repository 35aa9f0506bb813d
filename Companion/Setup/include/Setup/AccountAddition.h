#pragma once

#include <Session/CommandContext.h>
#include <Setup/LocationExamination.h>

#include <string>
#include <vector>

namespace hbr {

/// An account that was added, or that already existed.
struct AddedAccount {
    platform::Account account;
    LocationExamination examination;
    bool wasThere = false;
};

/// The location as an account: its name from the folder or file, not yet made unique.
platform::Account accountFor(const platform::Environment& environment, const std::string& location,
                             const std::vector<std::string>& addresses);

/// `name`, or "NAME 2", "NAME 3" … when an account has it already.
std::string uniqueAccountName(const std::string& name, const std::vector<platform::Account>& accounts);

/// Whether both read the same things from the same place.
bool isSameAccount(const platform::Account& a, const platform::Account& b);

/// With symbolic links resolved; unchanged where that fails.
std::filesystem::path realPath(const std::filesystem::path& path);

/// Whether the location is the home folder or a parent of it: too much to read, and never a calendar folder.
bool isTooWide(const platform::Environment& environment, const std::filesystem::path& location);
std::string tooWideText(const platform::Environment& environment, const std::filesystem::path& location);

/// Appends the texts that are missing.
void addMissing(std::vector<std::string>& texts, const std::vector<std::string>& more);

/// Reads the location and adds it. If an account of the same place exists, only its missing addresses are
/// added. Writes nothing with `dryRun`. Throws when the location cannot be an account or the accounts cannot
/// be written.
AddedAccount addAccount(CommandContext& context, platform::Account account, bool dryRun);

/// Starts watching all calendars and task lists of new accounts, and those of existing accounts that the user
/// has not decided about. Returns what was activated.
SetupRecord watchAdded(CommandContext& context, const std::vector<AddedAccount>& accounts);

/// Lines for standard output: what an account contains, and how much of it was skipped.
std::string describeAddition(const AddedAccount& added, const CommandContext& context, bool dryRun);

[[noreturn]] void failAccountsWrite(CommandContext& context);

}  // namespace hbr
