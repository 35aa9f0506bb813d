#include "Calendars/AccountJson.h"
#include "Framework/CommandWithActions.h"

#include <Session/CommandContext.h>
#include <Setup/AccountAddition.h>
#include <Setup/ContactAddition.h>
#include <Words/CompanionText.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

using platform::Account;

/// The sources of participants' names and pictures.
class ContactsCommand final : public CommandWithActions<ContactsCommand> {
  public:
    ContactsCommand() : CommandWithActions(&ContactsCommand::list) {}

    std::string_view name() const override { return "contacts"; }
    std::string_view group() const override { return commandGroup::calendars; }
    std::string_view summary() const override { return "Where names of participants are read from"; }
    std::string_view examples() const override {
        return "  heedbanner contacts list                    all folders of contacts and their state\n"
               "  heedbanner contacts add ~/.contacts         one more folder of .vcf files\n"
               "  heedbanner contacts remove contacts         its files stay as they are";
    }
    bool readsCalendars() const override { return false; }

    void declare(CLI::App& app) override {
        app.require_subcommand(0, 1);
        auto* list = app.add_subcommand("list", "All sources, how many cards they contain, and their state");
        list->add_flag("--json", json_, "As JSON");

        auto* add =
            CommandWithActions::add(app, "add", "Add a file or folder of contacts", &ContactsCommand::add);
        add->add_option("LOCATION", location_, "A .vcf file, a folder of them, or a tree of such folders")
            ->type_name("")
            ->required();
        add->add_option("--name", newName_, "Instead of the name of the file or folder")->type_name("NAME");

        auto* remove = CommandWithActions::add(app, "remove", "Remove a source; its files are not changed",
                                               &ContactsCommand::remove);
        remove->add_option("NAME", name_, "Its name")->type_name("")->required();
    }

  private:
    ExitCode list(CommandContext& context) {
        const auto reports = context.core().contactCards().report();
        if (!json_) return listAsText(context, reports);
        context.console().out() << writeJson(contactsJson(reports), 2) << "\n";
        return ExitCode::done;
    }

    static ExitCode listAsText(CommandContext& context,
                               const std::vector<platform::ContactSourceReport>& reports) {
        const Console& console = context.console();
        for (const auto& report : reports) {
            console.out() << console.bold(onOneLine(report.source.name)) << "  "
                          << onOneLine(report.source.location.string()) << "\n  "
                          << (report.readable
                                  ? companionCount(*context.environment(), "Count.contacts", report.cards)
                                  : companionText(*context.environment(), "Accounts.cannotBeRead",
                                                  {report.problem}))
                          << "\n";
        }
        if (reports.empty()) {
            console.err() << companionText(*context.environment(), "Contacts.none") << "\n";
        }
        return ExitCode::done;
    }

    ExitCode add(CommandContext& context) {
        const auto added = addContacts(context, location_, newName_);
        const Console& console = context.console();
        console.out() << console.bold(onOneLine(added.account.name)) << " ("
                      << onOneLine(added.account.location.string()) << "): "
                      << companionText(*context.environment(),
                                       added.wasThere ? "Setup.alreadyThere" : "Setup.added")
                      << ", "
                      << companionCount(*context.environment(), "Count.contacts",
                                        added.examination.report.cards)
                      << "\n";
        if (added.examination.skipped > 0) {
            console.out() << "  "
                          << companionCount(*context.environment(), "Contacts.skipped",
                                            added.examination.skipped)
                          << "\n";
        }
        return ExitCode::done;
    }

    ExitCode remove(CommandContext& context) {
        std::vector<std::string> names;
        bool holdsCalendars = false;
        const auto isMeant = [&](const Account& one) {
            return one.name == name_ && one.contents == Account::Contents::contacts;
        };
        bool isThere = false;
        const bool written = context.accounts().update([&](std::vector<Account>& accounts) {
            for (const auto& one : accounts) {
                isThere = isThere || isMeant(one);
                if (one.contents == Account::Contents::contacts) {
                    names.push_back(one.name);
                } else {
                    holdsCalendars = holdsCalendars || one.name == name_;
                }
            }
            std::erase_if(accounts, isMeant);
        });
        if (!isThere && holdsCalendars) {
            throw CommandFailure(ExitCode::nothingThere,
                                 companionText(*context.environment(), "Contacts.holdsCalendars", {name_}));
        }
        if (!isThere) {
            throw CommandFailure(ExitCode::nothingThere,
                                 companionText(*context.environment(), "Contacts.unknown", {name_}) +
                                     nameProposal(*context.environment(), name_, names));
        }
        if (!written) failAccountsWrite(context);
        context.console().out() << companionText(*context.environment(), "Contacts.removed",
                                                 {onOneLine(name_)})
                                << "\n";
        return ExitCode::done;
    }

    std::string location_;
    std::string name_;
    std::string newName_;
    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeContactsCommand() {
    return std::make_unique<ContactsCommand>();
}

}  // namespace hbr
