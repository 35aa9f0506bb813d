#include "AccountAddition.h"
#include "CollectionChoices.h"
#include "Command.h"
#include "CommandContext.h"

#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

/// The first run: calendars become accounts, and all of them are watched.
class SetupCommand final : public Command {
  public:
    std::string_view name() const override { return "setup"; }
    std::string_view group() const override { return commandGroup::calendars; }
    std::string_view summary() const override {
        return "Add calendars and watch all of them (the first step)";
    }
    std::string_view examples() const override {
        return "  heedbanner setup ~/.calendars --email me@example.org  a folder of calendars\n"
               "  heedbanner setup team.ics --dry-run                   what one file would give\n"
               "  heedbanner setup --undo                               takes the last setup back";
    }

    void declare(CLI::App& app) override {
        app.add_option("LOCATION", locations_, "A file, a folder of .ics files, or a tree of such folders")
            ->type_name("");
        app.add_option("--email", addresses_, "Your own addresses there; they tell which answers are yours")
            ->type_name("ADDRESS");
        app.add_flag("--dry-run", dryRun_, "Only tell what would be done");
        app.add_flag("--undo", undo_, "Remove what the last setup added");
    }

    ExitCode run(CommandContext& context) override {
        sortArguments();
        if (undo_) return undo(context);
        if (locations_.empty()) return setUpUsualPlaces(context);
        return setUp(context);
    }

  private:
    /// "--email a@example.org FOLDER": an option that takes several values also takes what follows it.
    void sortArguments() {
        const auto isAddress = [](const std::string& text) {
            return text.find('@') != std::string::npos && text.find('/') == std::string::npos;
        };
        const auto places = std::stable_partition(addresses_.begin(), addresses_.end(), isAddress);
        locations_.insert(locations_.end(), places, addresses_.end());
        addresses_.erase(places, addresses_.end());
    }

    ExitCode setUpUsualPlaces(CommandContext& context) {
        const auto& environment = *context.environment();
        const std::vector<std::filesystem::path> usual = {
            environment.homeDirectory / ".calendars", environment.dataDirectory.parent_path() / "calendars"};
        std::string looked;
        for (const auto& place : usual) {
            looked += (looked.empty() ? "" : " and ") + place.string();
            if (!std::filesystem::exists(place)) continue;
            const auto examination = examineLocation(environment, accountFor(place.string(), addresses_));
            if (!examination.refusal.empty()) {
                context.console().complain(examination.refusal);
                continue;
            }
            context.console().err() << place.string() << ": " << countsText(examination.report) << "\n";
            locations_.push_back(place.string());
        }
        if (locations_.empty()) {
            throw CommandFailure(ExitCode::nothingThere,
                                 "no calendars found in " + looked + "; name them: heedbanner setup FOLDER");
        }
        const GeneralOptions& options = context.options();
        const bool mayAsk = !options.noInput && !dryRun_ && context.console().isInteractive();
        if (options.assumeYes || dryRun_ || (mayAsk && context.console().confirm("Add what was found?"))) {
            return setUp(context);
        }
        context.console().err() << "Nothing was added. To add it: heedbanner setup --yes\n";
        return ExitCode::done;
    }

    ExitCode setUp(CommandContext& context) {
        const Console& console = context.console();
        SetupRecord record;
        std::vector<AddedAccount> accounts;
        ExitCode code = ExitCode::done;
        for (const auto& location : locations_) {
            try {
                const auto added = addAccount(context, accountFor(location, addresses_), dryRun_);
                console.out() << describeAddition(added, console, dryRun_);
                accounts.push_back(added);
                if (!added.wasThere) record.accounts.push_back(added.account.name);
            } catch (const CommandFailure& failure) {
                console.complain(failure.what());
                if (code != ExitCode::failed) code = failure.code;
            }
        }
        if (dryRun_ || accounts.empty()) return code;

        const SetupRecord watched = watchAdded(context, accounts);
        record.calendars = watched.calendars;
        record.reminderLists = watched.reminderLists;
        if (!record.empty()) context.records().setLastSetup(record);
        const UserSettingsStore& settings = context.core().settings();
        console.out() << "Watched: " << counted(settings.activeCalendarIdentifiers().size(), "calendar")
                      << ", " << counted(settings.activeReminderListIdentifiers().size(), "task list")
                      << ". See them with: heedbanner agenda\n";
        return code;
    }

    ExitCode undo(CommandContext& context) const {
        const SetupRecord record = context.records().lastSetup();
        if (record.empty()) {
            throw CommandFailure(ExitCode::nothingThere, "there is no setup to take back");
        }
        const Console& console = context.console();
        const std::string state = dryRun_ ? "would be removed" : "removed";
        for (const auto& account : record.accounts)
            console.out() << onOneLine(account) << ": " << state << "\n";
        console.out() << counted(record.calendars.size(), "calendar") << ", "
                      << counted(record.reminderLists.size(), "task list") << ": "
                      << (dryRun_ ? "would no longer be watched" : "no longer watched") << "\n";
        if (dryRun_) return ExitCode::done;

        setActive(context, platform::EKEntityType::event, record.calendars, false);
        setActive(context, platform::EKEntityType::reminder, record.reminderLists, false);
        const bool written = context.accounts().update([&](std::vector<platform::Account>& accounts) {
            std::erase_if(accounts, [&](const platform::Account& one) {
                return std::find(record.accounts.begin(), record.accounts.end(), one.name) !=
                       record.accounts.end();
            });
        });
        if (!written) failAccountsWrite(context);
        // Should they come back one day, they are new.
        context.records().removeDecided(record.calendars);
        context.records().removeDecided(record.reminderLists);
        context.records().setLastSetup({});
        return ExitCode::done;
    }

    std::vector<std::string> locations_;
    std::vector<std::string> addresses_;
    bool dryRun_ = false;
    bool undo_ = false;
};

}  // namespace

std::unique_ptr<Command> makeSetupCommand() {
    return std::make_unique<SetupCommand>();
}

}  // namespace hbr
