#include <Setup/ContactAddition.h>

#include <Setup/AccountAddition.h>
#include <Setup/LocationExamination.h>
#include <Words/CompanionText.h>

#include <algorithm>

namespace hbr {

namespace {

ContactsExamination refused(ContactsExamination examination, ExitCode code, std::string reason) {
    examination.refusal = std::move(reason);
    examination.refusalCode = code;
    return examination;
}

}  // namespace

ContactsExamination examineContacts(const platform::Environment& environment,
                                    const platform::Account& account) {
    if (auto fault = faultOfName(environment, account.location); !fault.empty())
        return refused({}, ExitCode::failed, std::move(fault));
    const auto diagnostics = std::make_shared<platform::CollectedDiagnostics>();
    auto trial = std::make_shared<platform::Environment>(environment);
    trial->diagnostics = diagnostics;
    const platform::CNContactStore store(
        trial, {.load = [&] { return std::vector{platform::ContactSource{account.name, account.location}}; },
                .definedIn = {}});
    ContactsExamination result;
    result.report = store.report().front();
    result.skipped = diagnostics->all().size();

    const std::string location = account.location.string();
    if (!result.report.readable) {
        return refused(result, ExitCode::failed, location + ": " + result.report.problem);
    }
    if (result.report.cards > 0) return result;
    if (!std::filesystem::is_directory(account.location)) {
        return refused(result, ExitCode::failed,
                       location + ": " + companionText(environment, "Location.noCardFile"));
    }
    return refused(result, ExitCode::nothingThere,
                   location + ": " + companionText(environment, "Location.noCards"));
}

AddedContacts addContacts(CommandContext& context, const std::string& location, const std::string& name) {
    AddedContacts added;
    added.account = accountFor(*context.environment(), location, {});
    added.account.contents = platform::Account::Contents::contacts;
    if (!name.empty()) added.account.name = name;
    added.examination = examineContacts(*context.environment(), added.account);
    if (!added.examination.refusal.empty()) {
        throw CommandFailure(added.examination.refusalCode, added.examination.refusal);
    }
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
