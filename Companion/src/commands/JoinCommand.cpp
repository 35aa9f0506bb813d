#include "CallJoining.h"
#include "Command.h"
#include "CommandContext.h"
#include "EventChoice.h"
#include "EventName.h"

#include <HbrCore/Scheduling/CallToJoin.h>
#include <CLI/App.hpp>

namespace hbr {

namespace {

/// Joins the call that one means now.
class JoinCommand final : public Command {
  public:
    std::string_view name() const override { return "join"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Join the call that is about to begin or under way"; }
    std::string_view examples() const override {
        return "  heedbanner join              the call about to begin, else the one under way\n"
               "  heedbanner join standup      the call of the event with that in its title\n"
               "  heedbanner join --print      only print its address";
    }

    void declare(CLI::App& app) override {
        app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("");
        app.add_flag("--print", print_, "Print the address as the event has it, open nothing");
    }

    ExitCode run(CommandContext& context) override {
        context.requireReadableAccounts();
        const Event event = wanted_.empty() ? eventNow(context) : chosenEvent(context, wanted_);
        if (print_) {
            context.console().out() << chosenCall(context, event).url.absoluteString() << "\n";
        } else {
            joinCall(context, event);
        }
        return ExitCode::done;
    }

  private:
    static Event eventNow(CommandContext& context) {
        CoreServices& core = context.core();
        reloadAndWait(core);
        if (auto event = callToJoin(core)) return *std::move(event);
        std::string message = "no call is under way or about to begin";
        if (const auto next = nextCall(core)) {
            message += "; the next one is " + quotedTitle(*next) + ", " +
                       timesText(*next, core.formatters(), context.now());
        }
        throw CommandFailure(ExitCode::nothingThere, message);
    }

    std::string wanted_;
    bool print_ = false;
};

}  // namespace

std::unique_ptr<Command> makeJoinCommand() {
    return std::make_unique<JoinCommand>();
}

}  // namespace hbr
