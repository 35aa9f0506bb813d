#include "Event/EventCard.h"
#include "Event/EventChoice.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <CLI/App.hpp>

namespace hbr {

namespace {

/// One event in full.
class ShowCommand final : public Command {
  public:
    std::string_view name() const override { return "show"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Everything about one event, with its participants"; }
    std::string_view examples() const override {
        return "  heedbanner show now          what is under way\n"
               "  heedbanner show next         what comes next\n"
               "  heedbanner show \"planning\"   the event with that in its title";
    }

    void declare(CLI::App& app) override {
        app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("")->required();
    }

    ExitCode run(CommandContext& context) override {
        context.requireReadableAccounts();
        const Event event = chosenEvent(context, wanted_);
        context.console().out() << eventCard(context, event);
        return ExitCode::done;
    }

  private:
    std::string wanted_;
};

}  // namespace

std::unique_ptr<Command> makeShowCommand() {
    return std::make_unique<ShowCommand>();
}

}  // namespace hbr
