#include <Setup/SetupExecution.h>

#include <Setup/AccountAddition.h>
#include <Setup/CollectionChoices.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <algorithm>

namespace hbr {

namespace {

using platform::Account;

Account* accountLike(std::vector<Account>& accounts, const Account& wanted) {
    const auto found =
        std::ranges::find_if(accounts, [&](const Account& one) { return isSameAccount(one, wanted); });
    return found == accounts.end() ? nullptr : &*found;
}

/// Another program may have added an account, or taken a name, since the plan was made.
SetupRecord writeAccounts(CommandContext& context, std::vector<PlannedAccount>& planned) {
    SetupRecord record;
    const bool written = context.accounts().update([&](std::vector<Account>& accounts) {
        for (auto& one : planned) {
            Account* there = accountLike(accounts, one.account);
            one.isThere = there != nullptr;
            if (!there) {
                one.account.name = uniqueAccountName(one.account.name, accounts);
                accounts.push_back(one.account);
                record.accounts.push_back(one.account.name);
                continue;
            }
            const std::size_t count = there->addresses.size();
            addMissing(there->addresses, one.account.addresses);
            one.account = *there;
            if (there->addresses.size() == count) continue;
            record.addresses[there->name].assign(
                there->addresses.begin() + static_cast<std::ptrdiff_t>(count), there->addresses.end());
        }
    });
    if (!written) failAccountsWrite(context);
    return record;
}

void describe(const PlannedAccount& one, const CommandContext& context, bool dryRun) {
    const Console& console = context.console();
    const platform::Environment& environment = *context.environment();
    const std::string state = companionText(environment, one.isThere ? "Setup.alreadyThere"
                                                         : dryRun    ? "Setup.wouldBeAdded"
                                                                     : "Setup.added");
    console.out() << console.bold(onOneLine(one.account.name)) << " ("
                  << onOneLine(one.account.location.string()) << "): " << state << ", "
                  << one.counts(environment) << "\n";
    if (const auto skipped = one.skipped(); skipped > 0) {
        console.out() << "  " << companionCount(environment, "Setup.skipped", skipped) << "\n";
    }
    for (const auto& candidate : one.candidates) {
        console.out() << "  "
                      << companionText(environment, "Setup.address",
                                       {onOneLine(candidate.address), shareText(environment, candidate)})
                      << "\n";
    }
}

std::vector<AddedAccount> calendarAccounts(const std::vector<PlannedAccount>& planned) {
    std::vector<AddedAccount> accounts;
    for (const auto& one : planned) {
        if (!one.holdsContacts()) accounts.push_back({one.account, one.calendars, one.isThere});
    }
    return accounts;
}

/// Prints what is now watched in accounts that already existed.
void printNewlyWatched(CommandContext& context, const std::vector<PlannedAccount>& planned,
                       const std::vector<std::string>& identifiers, platform::EKEntityType type) {
    for (const auto& choice : collectionChoices(context, type)) {
        const bool isOfOld = std::ranges::any_of(planned, [&](const PlannedAccount& one) {
            return one.isThere && one.account.name == choice.accountName;
        });
        if (!isOfOld || std::ranges::find(identifiers, choice.identifier) == identifiers.end()) continue;
        context.console().out() << companionText(*context.environment(), "Setup.newlyWatched",
                                                 {onOneLine(choice.accountName), onOneLine(choice.name)})
                                << "\n";
    }
}

}  // namespace

void carryOut(CommandContext& context, const SetupPlan& plan, bool dryRun) {
    const Console& console = context.console();
    auto planned = plan.accounts;
    SetupRecord record;
    if (!dryRun) record = writeAccounts(context, planned);
    for (const auto& one : planned)
        describe(one, context, dryRun);
    if (dryRun || planned.empty()) return;

    const SetupRecord watched = watchAdded(context, calendarAccounts(planned));
    record.calendars = watched.calendars;
    record.reminderLists = watched.reminderLists;
    if (record.empty()) {
        console.out() << companionText(*context.environment(), "Setup.nothingNew") << "\n";
        return;
    }
    context.records().setLastSetup(record);
    printNewlyWatched(context, planned, record.calendars, platform::EKEntityType::event);
    printNewlyWatched(context, planned, record.reminderLists, platform::EKEntityType::reminder);
    const UserSettingsStore& settings = context.core().settings();
    console.out() << companionText(*context.environment(), "Setup.watched",
                                   {companionCount(*context.environment(), "Count.calendars",
                                                   settings.activeCalendarIdentifiers().size()),
                                    companionCount(*context.environment(), "Count.taskLists",
                                                   settings.activeReminderListIdentifiers().size())})
                  << "\n";
}

ExitCode undoSetup(CommandContext& context, bool dryRun) {
    const SetupRecord record = context.records().lastSetup();
    if (record.empty())
        throw CommandFailure(ExitCode::nothingThere,
                             companionText(*context.environment(), "Setup.nothingToUndo"));
    const Console& console = context.console();
    const platform::Environment& environment = *context.environment();
    const std::string state = companionText(environment, dryRun ? "Setup.wouldBeRemoved" : "Setup.removed");
    for (const auto& account : record.accounts)
        console.out() << onOneLine(account) << ": " << state << "\n";
    for (const auto& [account, addresses] : record.addresses) {
        for (const auto& address : addresses)
            console.out() << onOneLine(account) << ", " << onOneLine(address) << ": " << state << "\n";
    }
    console.out() << companionCount(environment, "Count.calendars", record.calendars.size()) << ", "
                  << companionCount(environment, "Count.taskLists", record.reminderLists.size()) << ": "
                  << companionText(environment,
                                   dryRun ? "Setup.wouldNoLongerBeWatched" : "Setup.noLongerWatched")
                  << "\n";
    if (dryRun) return ExitCode::done;

    setActive(context, platform::EKEntityType::event, record.calendars, false);
    setActive(context, platform::EKEntityType::reminder, record.reminderLists, false);
    const bool written = context.accounts().update([&](std::vector<Account>& accounts) {
        std::erase_if(accounts, [&](const Account& one) {
            return std::ranges::find(record.accounts, one.name) != record.accounts.end();
        });
        for (auto& account : accounts) {
            const auto added = record.addresses.find(account.name);
            if (added == record.addresses.end()) continue;
            std::erase_if(account.addresses, [&](const std::string& address) {
                return std::ranges::find(added->second, address) != added->second.end();
            });
        }
    });
    if (!written) failAccountsWrite(context);
    // If they are added again later, they are new.
    context.records().removeDecided(record.calendars);
    context.records().removeDecided(record.reminderLists);
    context.records().setLastSetup({});
    return ExitCode::done;
}

}  // namespace hbr
