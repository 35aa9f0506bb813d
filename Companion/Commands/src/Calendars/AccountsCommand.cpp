#include "Calendars/AccountJson.h"
#include "Framework/CommandWithActions.h"

#include <Session/CommandContext.h>
#include <Setup/AccountAddition.h>
#include <Setup/AccountRenaming.h>
#include <Setup/CollectionChoices.h>
#include <TimeAndText/JoinedText.h>
#include <Values/JsonText.h>
#include <Values/JsonValue.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

using platform::Account;

/// Adds, removes, renames and refreshes accounts.
class AccountsCommand final : public CommandWithActions<AccountsCommand> {
  public:
    AccountsCommand() : CommandWithActions(&AccountsCommand::list) {}

    std::string_view name() const override { return "accounts"; }
    std::string_view group() const override { return commandGroup::calendars; }
    std::string_view summary() const override { return "Where calendars are read from"; }
    std::string_view examples() const override {
        return "  heedbanner accounts list                       all accounts and their state\n"
               "  heedbanner accounts add team.ics --name Team   one more, and watch its calendars\n"
               "  heedbanner accounts remove Team                its files stay as they are";
    }

    void declare(CLI::App& app) override {
        app.require_subcommand(0, 1);
        auto* list =
            app.add_subcommand("list", "All accounts, what they contain, and whether they can be read");
        list->add_flag("--json", json_, "As JSON");

        auto* add = CommandWithActions::add(app, "add", "Add a file or folder and watch its calendars",
                                            &AccountsCommand::add);
        add->add_option("LOCATION", location_, "A file, a folder of .ics files, or a tree of such folders")
            ->type_name("")
            ->required();
        add->add_option("--name", newName_, "Instead of the name of the file or folder")->type_name("NAME");
        add->add_option("--email", addresses_, "Your own addresses there")->type_name("ADDRESS");
        add->add_flag("--delegate", isDelegate_, "Someone else's, who delegated it to you");
        add->add_option("--kind", kind_, "ordinary, birthdays or holidays")
            ->type_name("KIND")
            ->check(CLI::IsMember({"ordinary", "birthdays", "holidays"}));

        auto* remove = CommandWithActions::add(app, "remove", "Remove an account; its files are not changed",
                                               &AccountsCommand::remove);
        remove->add_option("NAME", name_, "The account's name")->type_name("")->required();

        auto* rename =
            CommandWithActions::add(app, "rename", "Give an account another name", &AccountsCommand::rename);
        rename->add_option("NAME", name_, "The account's name")->type_name("")->required();
        rename->add_option("NEW", newName_, "Its new name")->type_name("")->required();

        CommandWithActions::add(app, "refresh", "Read the accounts again and print what they contain",
                                &AccountsCommand::refresh);
    }

  private:
    ExitCode list(CommandContext& context) {
        const auto reports = context.core().aggregatedEventStore().report();
        return json_ ? listAsJson(context, reports) : listAsText(context, reports);
    }

    ExitCode refresh(CommandContext& context) {
        context.requireReadableAccounts();
        context.core().aggregatedEventStore().refreshData();
        return list(context);
    }

    ExitCode listAsText(CommandContext& context, const std::vector<platform::AccountReport>& reports) const {
        const Console& console = context.console();
        for (const auto& report : reports) {
            console.out() << console.bold(onOneLine(report.account.name)) << "  "
                          << onOneLine(report.account.location.string()) << "\n  "
                          << (report.readable ? countsText(*context.environment(), report)
                                              : companionText(*context.environment(), "Accounts.cannotBeRead",
                                                              {report.problem}))
                          << "\n";
            if (!report.account.addresses.empty()) {
                console.out() << "  "
                              << companionText(*context.environment(), "Accounts.yours",
                                               {onOneLine(platform::joined(report.account.addresses))})
                              << "\n";
            }
            if (report.account.isDelegate)
                console.out() << "  " << companionText(*context.environment(), "Accounts.delegated") << "\n";
            if (report.account.kind != Account::Kind::ordinary) {
                console.out() << "  "
                              << companionText(*context.environment(),
                                               "Accounts." + std::string(kindName(report.account.kind)))
                              << "\n";
            }
        }
        if (reports.empty()) {
            console.err() << companionText(*context.environment(), "Accounts.noneYet") << "\n";
        }
        return ExitCode::done;
    }

    static ExitCode listAsJson(CommandContext& context, const std::vector<platform::AccountReport>& reports) {
        auto array = platform::JsonValue::array();
        for (const auto& report : reports)
            array.append(accountJson(report));
        context.console().out() << writeJson(array, 2) << "\n";
        return ExitCode::done;
    }

    ExitCode add(CommandContext& context) {
        Account account = accountFor(*context.environment(), location_, addresses_);
        if (!newName_.empty()) account.name = newName_;
        account.isDelegate = isDelegate_;
        if (kind_ == "birthdays") account.kind = Account::Kind::birthdays;
        if (kind_ == "holidays") account.kind = Account::Kind::holidays;
        const auto added = addAccount(context, account, false);
        context.console().out() << describeAddition(added, context, false);
        watchAdded(context, {added});
        return ExitCode::done;
    }

    ExitCode remove(CommandContext& context) {
        requireAccount(context);
        std::vector<std::string> calendars;
        std::vector<std::string> lists;
        for (const auto& report : context.core().aggregatedEventStore().report()) {
            if (report.account.name != name_) continue;
            for (const auto& collection : report.collections) {
                if (collection.events) calendars.push_back(collection.events->calendarIdentifier);
                if (collection.reminders) lists.push_back(collection.reminders->calendarIdentifier);
            }
        }
        const bool written = context.accounts().update([&](std::vector<Account>& accounts) {
            std::erase_if(accounts, [&](const Account& one) { return one.name == name_; });
        });
        if (!written) failAccountsWrite(context);
        setActive(context, platform::EKEntityType::event, calendars, false);
        setActive(context, platform::EKEntityType::reminder, lists, false);
        context.records().removeDecided(calendars);
        context.records().removeDecided(lists);
        context.console().out() << companionText(*context.environment(), "Accounts.removed",
                                                 {onOneLine(name_)})
                                << "\n";
        return ExitCode::done;
    }

    ExitCode rename(CommandContext& context) {
        requireAccount(context);
        if (newName_.empty())
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Accounts.emptyName"));
        if (name_ == newName_) return ExitCode::done;
        renameAccount(context, name_, newName_);
        context.console().out() << companionText(*context.environment(), "Accounts.renamed",
                                                 {onOneLine(name_), onOneLine(newName_)})
                                << "\n";
        return ExitCode::done;
    }

    void requireAccount(CommandContext& context) const {
        std::vector<std::string> names;
        for (const auto& account : context.accounts().load())
            names.push_back(account.name);
        if (std::find(names.begin(), names.end(), name_) != names.end()) return;
        throw CommandFailure(ExitCode::nothingThere,
                             companionText(*context.environment(), "Accounts.unknown", {name_}) +
                                 nameProposal(*context.environment(), name_, names));
    }

    std::string location_;
    std::string name_;
    std::string newName_;
    std::vector<std::string> addresses_;
    std::string kind_ = "ordinary";
    bool isDelegate_ = false;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeAccountsCommand() {
    return std::make_unique<AccountsCommand>();
}

}  // namespace hbr
