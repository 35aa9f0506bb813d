#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Setup/AccountAddition.h>
#include <Setup/DesktopIntegration.h>
#include <Setup/PathExpansion.h>
#include <Setup/SetupConversation.h>
#include <Setup/SetupExecution.h>
#include <Setup/SetupPlan.h>
#include <Setup/UsualPlaces.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <CLI/App.hpp>

#include <algorithm>

namespace hbr {

namespace {

/// The first run: calendars and contacts become accounts, and all calendars are watched.
class SetupCommand final : public Command {
  public:
    std::string_view name() const override { return "setup"; }
    std::string_view group() const override { return commandGroup::calendars; }
    std::string_view summary() const override {
        return "Find calendars and contacts, add them, watch all of them (the first step)";
    }
    std::string_view examples() const override {
        return "  heedbanner setup                                      looks in the usual places and asks\n"
               "  heedbanner setup ~/.calendars --email me@example.org  a folder of calendars\n"
               "  heedbanner setup --undo                               takes the last setup back";
    }

    void declare(CLI::App& app) override {
        app.add_option("LOCATION", locations_,
                       "A file, a folder of .ics or .vcf files, or a tree of such folders; without one the "
                       "usual places and those that vdirsyncer, khal and khard know")
            ->type_name("");
        app.add_option("--email", addresses_,
                       "Your own addresses there; your answers to invitations are recognised by them")
            ->type_name("ADDRESS");
        app.add_flag("--dry-run", dryRun_, "Only print what would be done");
        app.add_flag("--desktop", desktop_,
                     "Start the widgets of the desktop at login and when a link needs them");
        app.add_flag("--undo", undo_, "Remove what the last setup added");
    }

    ExitCode run(CommandContext& context) override {
        sortArguments();
        if (undo_) return undo(context);
        if (desktop_) {
            installDesktopIntegration(context, dryRun_);
            if (locations_.empty()) return ExitCode::done;
        }
        return locations_.empty() ? setUpUsualPlaces(context) : setUpLocations(context);
    }

  private:
    /// Undoes the desktop integration and the last setup; with --desktop only the integration.
    ExitCode undo(CommandContext& context) const {
        const bool wasIntegrated = removeDesktopIntegration(context, dryRun_);
        try {
            if (!desktop_) return undoSetup(context, dryRun_);
        } catch (const CommandFailure& failure) {
            if (!wasIntegrated || failure.code != ExitCode::nothingThere) throw;
        }
        if (wasIntegrated) return ExitCode::done;
        throw CommandFailure(ExitCode::nothingThere,
                             companionText(*context.environment(), "Setup.noDesktop"));
    }

    /// "--email a@example.org FOLDER": an option that takes several values also takes what follows it.
    void sortArguments() {
        const auto isAddress = [](const std::string& text) {
            return text.find('@') != std::string::npos && text.find('/') == std::string::npos;
        };
        const auto places = std::stable_partition(addresses_.begin(), addresses_.end(), isAddress);
        locations_.insert(locations_.end(), places, addresses_.end());
        addresses_.erase(places, addresses_.end());
    }

    /// Questions are asked only when no location was given.
    SetupAnswers answers(const CommandContext& context) const {
        const GeneralOptions& options = context.options();
        if (options.assumeYes) return SetupAnswers::taken;
        if (options.noInput) return SetupAnswers::none;
        if (!locations_.empty() || dryRun_) return SetupAnswers::taken;
        return context.console().isInteractive() ? SetupAnswers::asked : SetupAnswers::none;
    }

    ExitCode setUpLocations(CommandContext& context) const {
        std::vector<LocationCandidate> candidates;
        ExitCode code = ExitCode::done;
        for (const auto& location : locations_) {
            try {
                const auto account = accountFor(*context.environment(), location, addresses_);
                candidates.push_back({.location = account.location, .addresses = addresses_});
            } catch (const CommandFailure& failure) {
                context.console().complain(failure.what());
                code = failure.code;
            }
        }
        SetupPlan plan = planSetup(context, candidates);
        code = worse(code, complain(context, plan));
        if (plan.accounts.empty()) return code;
        chooseAddresses(context, plan, answers(context));
        carryOut(context, plan, dryRun_);
        return code;
    }

    ExitCode setUpUsualPlaces(CommandContext& context) const {
        FoundCandidates found = usualPlaces(*context.environment());
        for (auto& candidate : found.candidates)
            addMissing(candidate.addresses, addresses_);
        SetupPlan plan = planSetup(context, found.candidates);
        for (const auto& note : found.notes)
            context.console().err() << companionText(*context.environment(), "Setup.note", {onOneLine(note)})
                                    << "\n";
        // It is not an error when the usual places are empty.
        std::erase_if(plan.refusals, [](const auto& one) { return one.code == ExitCode::nothingThere; });
        const ExitCode code = complain(context, plan);
        if (plan.accounts.empty()) {
            showWhatToDo(context);
            return worse(ExitCode::nothingThere, code);
        }
        const SetupAnswers given = answers(context);
        const bool isChosen = plan.countOfNew() == 0 || chooseAccounts(context, plan, given);
        if (!isChosen && (given != SetupAnswers::taken || plan.accounts.empty())) {
            context.console().err() << companionText(*context.environment(), "Setup.nothingAdded") << "\n";
            return code;
        }
        chooseAddresses(context, plan, given);
        carryOut(context, plan, dryRun_ || given == SetupAnswers::none);
        return code;
    }

    static ExitCode worse(ExitCode a, ExitCode b) {
        if (a == ExitCode::failed || b == ExitCode::failed) return ExitCode::failed;
        return a == ExitCode::done ? b : a;
    }

    static ExitCode complain(const CommandContext& context, const SetupPlan& plan) {
        ExitCode code = ExitCode::done;
        for (const auto& refusal : plan.refusals) {
            context.console().complain(refusal.what());
            code = worse(code, refusal.code);
        }
        return code;
    }

    static void showWhatToDo(const CommandContext& context) {
        const auto& home = context.environment()->homeDirectory;
        std::string looked;
        for (const auto& folder : usualFolders(*context.environment()))
            looked += withTilde(folder, home) + ", ";
        const Console& console = context.console();
        console.complain(companionText(*context.environment(), "Setup.noneFound"));
        console.err() << companionText(*context.environment(), "Setup.looked", {looked}) << "\n";
    }

    std::vector<std::string> locations_;
    std::vector<std::string> addresses_;
    bool dryRun_ = false;
    bool undo_ = false;
    bool desktop_ = false;
};

}  // namespace

std::unique_ptr<Command> makeSetupCommand() {
    return std::make_unique<SetupCommand>();
}

}  // namespace hbr
