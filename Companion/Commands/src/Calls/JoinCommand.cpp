#include "Alerts/ReminderText.h"
#include "Calls/CallJoining.h"
#include "Event/EventChoice.h"
#include "Framework/Command.h"
#include "Status/Status.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <CLI/App.hpp>

#include <HbrCore/Scheduling/CallToJoin.h>

namespace hbr {

namespace {

/// Joins the call that is most likely meant now.
class JoinCommand final : public Command {
  public:
    std::string_view name() const override { return "join"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Join the call that is about to begin or under way"; }
    std::string_view examples() const override {
        return "  heedbanner join              the call about to begin, else the one under way\n"
               "  heedbanner join standup      the call of the event with that in its title\n"
               "  heedbanner join --shown      the call of the meeting in the bar, for a click on it";
    }

    bool asksForAccess() const override { return false; }

    void declare(CLI::App& app) override {
        auto* event = app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("");
        auto* shown = app.add_flag("--shown", shown_, "Only the meeting that status shows");
        shown->excludes(event);
        app.add_option("--within", within_, "With --shown: the same as for status (30m, 2h)")
            ->type_name("DURATION")
            ->needs(shown);
        app.add_flag("--print", print_, "Only print the address from the event");
    }

    ExitCode run(CommandContext& context) override {
        std::optional<double> within;
        if (!within_.empty())
            within = static_cast<double>(secondsOfOption("join: --within", within_, *context.environment()));
        context.requireReadableAccounts();
        const Event event = shown_            ? eventShown(context, within)
                            : wanted_.empty() ? eventNow(context)
                                              : chosenEvent(context, wanted_);
        if (print_) {
            context.console().out() << chosenCall(context, event).url.absoluteString() << "\n";
        } else {
            joinCall(context, event);
        }
        return ExitCode::done;
    }

  private:
    static Event eventShown(CommandContext& context, std::optional<double> within) {
        reloadAndWait(context.core());
        const Status status = currentStatus(context.core(), within);
        if (status.event) return *status.event;
        throw CommandFailure(ExitCode::nothingThere, companionText(*context.environment(), "Join.noneShown"));
    }

    static Event eventNow(CommandContext& context) {
        CoreServices& core = context.core();
        reloadAndWait(core);
        if (auto event = callToJoin(core)) return *std::move(event);
        const auto next = nextCall(core);
        if (!next) {
            throw CommandFailure(ExitCode::nothingThere, companionText(*context.environment(), "Join.none"));
        }
        const std::string title = quotedTitle(*next, *context.environment());
        const std::string times = timesText(*next, core.formatters(), context.now());
        throw CommandFailure(ExitCode::nothingThere,
                             companionText(*context.environment(), "Join.noneButLater", {title, times}));
    }

    std::string wanted_;
    bool shown_ = false;
    std::string within_;
    bool print_ = false;
};

}  // namespace

std::unique_ptr<Command> makeJoinCommand() {
    return std::make_unique<JoinCommand>();
}

}  // namespace hbr
