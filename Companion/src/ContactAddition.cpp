#include "ContactAddition.h"

#include "AccountAddition.h"

#include <algorithm>

namespace hbr {

namespace {

void examine(CommandContext& context, AddedContacts& added) {
    const auto diagnostics = std::make_shared<platform::CollectedDiagnostics>();
    auto trial = std::make_shared<platform::Environment>(*context.environment());
    trial->diagnostics = diagnostics;
    const platform::CNContactStore store(
        trial,
        {.load =
             [&] { return std::vector{platform::ContactSource{added.account.name, added.account.location}}; },
         .definedIn = {}});
    added.report = store.report().front();
    added.skipped = diagnostics->all().size();
}

/// Why the location is no place of contacts.
void requireCards(const AddedContacts& added) {
    const std::string location = added.account.location.string();
    const auto& report = added.report;
    if (!report.readable) throw CommandFailure(ExitCode::failed, location + ": " + report.problem);
    if (report.cards > 0) return;
    if (!std::filesystem::is_directory(added.account.location)) {
        throw CommandFailure(ExitCode::failed,
                             location + ": not a vCard file (it has no card that can be read)");
    }
    throw CommandFailure(ExitCode::nothingThere,
                         location + ": no contacts (.vcf files) in this folder or its subfolders");
}

}  // namespace

AddedContacts addContacts(CommandContext& context, const std::string& location, const std::string& name) {
    AddedContacts added;
    added.account = accountFor(location, {});
    added.account.contents = platform::Account::Contents::contacts;
    if (!name.empty()) added.account.name = name;
    examine(context, added);
    requireCards(added);
    const platform::Account wanted = added.account;
    const bool written = context.accounts().update([&](std::vector<platform::Account>& accounts) {
        const auto there = std::find_if(accounts.begin(), accounts.end(),
                                        [&](const auto& one) { return isSameAccount(one, wanted); });
        added.wasThere = there != accounts.end();
        added.account = added.wasThere ? *there : wanted;
        if (added.wasThere) return;
        added.account.name = uniqueAccountName(wanted.name, accounts);
        accounts.push_back(added.account);
    });
    if (!written) failAccountsWrite(context);
    context.forgetCore();
    return added;
}

}  // namespace hbr
