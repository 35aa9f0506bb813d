#pragma once

#include <Session/CommandContext.h>
#include <Setup/LocationExamination.h>

#include <string>
#include <vector>

namespace hbr {

/// One account that was added, or found to be there already.
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

/// Without symbolic links; as it is where they cannot be resolved.
std::filesystem::path realPath(const std::filesystem::path& path);

/// Whether the location is the home folder or one around it: too much to read, and nobody's calendar folder.
bool isTooWide(const platform::Environment& environment, const std::filesystem::path& location);
std::string tooWideText(const platform::Environment& environment, const std::filesystem::path& location);

/// Appends those texts that are not there yet.
void addMissing(std::vector<std::string>& texts, const std::vector<std::string>& more);

/// Reads the location and adds it unless an account of the same place is there (that one then gets the
/// addresses that it lacks). Nothing is written with `dryRun`. Throws when the location is no good or the
/// accounts cannot be written.
AddedAccount addAccount(CommandContext& context, platform::Account account, bool dryRun);

/// Starts watching every calendar and task list of accounts that were added, and of those that were there
/// the ones about which the user has not decided; gives what was activated.
SetupRecord watchAdded(CommandContext& context, const std::vector<AddedAccount>& accounts);

/// Lines for standard output: what an account holds, and what of it was skipped.
std::string describeAddition(const AddedAccount& added, const CommandContext& context, bool dryRun);

[[noreturn]] void failAccountsWrite(CommandContext& context);

}  // namespace hbr
