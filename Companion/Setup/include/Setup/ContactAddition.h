#pragma once

#include <ContactStore/CNContactStore.h>
#include <Session/CommandContext.h>

#include <string>

namespace hbr {

/// What a location contains as an account of contacts, examined without adding it.
struct ContactsExamination {
    platform::ContactSourceReport report;
    /// Cards and files that were skipped.
    std::size_t skipped = 0;
    /// Why it cannot be an account of contacts; empty when it can.
    std::string refusal;
    ExitCode refusalCode = ExitCode::done;
};

ContactsExamination examineContacts(const platform::Environment& environment,
                                    const platform::Account& account);

struct AddedContacts {
    platform::Account account;
    ContactsExamination examination;
    bool wasThere = false;
};

/// Reads the location's cards and adds it as an account of contacts unless it is one already. The default
/// name is that of the file or folder. Throws when no card can be read or the accounts cannot be written.
AddedContacts addContacts(CommandContext& context, const std::string& location, const std::string& name);

}  // namespace hbr
