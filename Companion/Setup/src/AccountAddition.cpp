#include <Setup/AccountAddition.h>

#include <Setup/CollectionChoices.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>

#include <algorithm>

namespace hbr {

namespace {

template <class Accounts>
auto* accountLike(Accounts& accounts, const platform::Account& account) {
    const auto found = std::find_if(accounts.begin(), accounts.end(),
                                    [&](const auto& one) { return isSameAccount(one, account); });
    return found == accounts.end() ? nullptr : &*found;
}

std::vector<std::string> toWatch(CommandContext& context, platform::EKEntityType type,
                                 const std::vector<AddedAccount>& accounts) {
    std::vector<std::string> identifiers;
    for (const auto& choice : collectionChoices(context, type)) {
        const bool isMeant = std::any_of(accounts.begin(), accounts.end(), [&](const AddedAccount& one) {
            return one.account.name == choice.accountName && (choice.isNew || !one.wasThere);
        });
        if (isMeant && !choice.active) identifiers.push_back(choice.identifier);
    }
    return identifiers;
}

}  // namespace

std::filesystem::path realPath(const std::filesystem::path& path) {
    std::error_code error;
    auto real = std::filesystem::canonical(path, error);
    return error ? path : real;
}

bool isTooWide(const platform::Environment& environment, const std::filesystem::path& location) {
    const auto real = realPath(location);
    const auto home = realPath(environment.homeDirectory);
    return real == real.root_path() || std::ranges::mismatch(real, home).in1 == real.end();
}

std::string tooWideText(const platform::Environment& environment, const std::filesystem::path& location) {
    return location.string() + ": " + companionText(environment, "Location.tooWide");
}

void addMissing(std::vector<std::string>& texts, const std::vector<std::string>& more) {
    for (const auto& text : more) {
        if (std::find(texts.begin(), texts.end(), text) == texts.end()) {
            texts.push_back(text);
        }
    }
}

bool isSameAccount(const platform::Account& a, const platform::Account& b) {
    std::error_code error;
    return a.contents == b.contents &&
           (a.location == b.location || std::filesystem::equivalent(a.location, b.location, error));
}

platform::Account accountFor(const platform::Environment& environment, const std::string& location,
                             const std::vector<std::string>& addresses) {
    if (location.find("://") != std::string::npos) {
        throw CommandFailure(ExitCode::failed,
                             location + ": " + companionText(environment, "Accounts.onlyFiles"));
    }
    platform::Account account;
    account.location = normalizedLocation(location);
    const bool isFolder = std::filesystem::is_directory(account.location);
    account.name = (isFolder ? account.location.filename() : account.location.stem()).string();
    account.name.erase(0, account.name.find_first_not_of('.'));
    if (account.name.empty()) account.name = "calendars";
    account.addresses = addresses;
    return account;
}

std::string uniqueAccountName(const std::string& name, const std::vector<platform::Account>& accounts) {
    const auto isTaken = [&](const std::string& text) {
        return std::any_of(accounts.begin(), accounts.end(),
                           [&](const auto& one) { return one.name == text; });
    };
    std::string unique = name;
    for (int number = 2; isTaken(unique); ++number)
        unique = name + " " + std::to_string(number);
    return unique;
}

AddedAccount addAccount(CommandContext& context, platform::Account account, bool dryRun) {
    auto existing = context.accounts().load();
    if (const auto* there = accountLike(existing, account)) {
        AddedAccount result{*there, examineLocation(*context.environment(), *there), true};
        addMissing(result.account.addresses, account.addresses);
        if (dryRun || result.account.addresses == there->addresses) return result;
        const bool written = context.accounts().update([&](std::vector<platform::Account>& accounts) {
            if (auto* stored = accountLike(accounts, account)) {
                addMissing(stored->addresses, account.addresses);
            }
        });
        if (!written) failAccountsWrite(context);
        return result;
    }
    if (isTooWide(*context.environment(), account.location))
        throw CommandFailure(ExitCode::failed, tooWideText(*context.environment(), account.location));
    account.name = uniqueAccountName(account.name, existing);
    AddedAccount result{account, examineLocation(*context.environment(), account), false};
    if (!result.examination.refusal.empty()) {
        throw CommandFailure(result.examination.refusalCode, result.examination.refusal);
    }
    if (dryRun) return result;
    const bool written = context.accounts().update([&](std::vector<platform::Account>& accounts) {
        // Another program may have added it, or taken the name, in the meantime.
        if (const auto* there = accountLike(accounts, account)) {
            result.account = *there;
            result.wasThere = true;
            return;
        }
        result.account.name = uniqueAccountName(account.name, accounts);
        accounts.push_back(result.account);
    });
    if (!written) failAccountsWrite(context);
    return result;
}

SetupRecord watchAdded(CommandContext& context, const std::vector<AddedAccount>& accounts) {
    context.forgetCore();
    SetupRecord record;
    record.calendars = toWatch(context, platform::EKEntityType::event, accounts);
    record.reminderLists = toWatch(context, platform::EKEntityType::reminder, accounts);
    setActive(context, platform::EKEntityType::event, record.calendars, true);
    setActive(context, platform::EKEntityType::reminder, record.reminderLists, true);
    return record;
}

std::string describeAddition(const AddedAccount& added, const CommandContext& context, bool dryRun) {
    const platform::Environment& environment = *context.environment();
    const std::string state = companionText(environment, added.wasThere ? "Setup.alreadyThere"
                                                         : dryRun       ? "Setup.wouldBeAdded"
                                                                        : "Setup.added");
    std::string text = context.console().bold(onOneLine(added.account.name)) + " (" +
                       onOneLine(added.account.location.string()) + "): " + state + ", " +
                       countsText(environment, added.examination.report) + "\n";
    const std::size_t skipped = added.examination.skippedCount();
    if (skipped > 0) text += "  " + companionCount(environment, "Setup.skipped", skipped) + "\n";
    return text;
}

void failAccountsWrite(CommandContext& context) {
    throw CommandFailure(ExitCode::failed, context.accounts().path().string() + ": " +
                                               companionText(*context.environment(), "Accounts.notWritten"));
}

}  // namespace hbr
