#pragma once

#include "CommandContext.h"

#include <string>

namespace hbr {

struct AddedContacts {
    platform::Account account;
    platform::ContactSourceReport report;
    /// Cards and files that were skipped.
    std::size_t skipped = 0;
    bool wasThere = false;
};

/// Reads the location's cards and adds it as an account of contacts unless it is one already. Without a
/// name it is called like the file or folder. Throws when there are no cards to be read or the accounts
/// cannot be written.
AddedContacts addContacts(CommandContext& context, const std::string& location, const std::string& name);

}  // namespace hbr
