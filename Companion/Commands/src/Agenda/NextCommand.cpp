#include "Agenda/AgendaEvents.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <CLI/App.hpp>

#include <HbrCore/Events/EventJson.h>
#include <algorithm>

namespace hbr {

namespace {

/// What comes next, on one line.
class NextCommand final : public Command {
  public:
    std::string_view name() const override { return "next"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override {
        return "What comes next, on one line: what, when, in how long";
    }
    std::string_view examples() const override {
        return "  heedbanner next\n"
               "  heedbanner next --json          for other programs\n"
               "  heedbanner show next            all about it";
    }

    bool asksForAccess() const override { return false; }

    void declare(CLI::App& app) override { app.add_flag("--json", json_, "As JSON"); }

    ExitCode run(CommandContext& context) override {
        context.requireReadableAccounts();
        const auto agenda = agendaEvents(context, std::nullopt);
        const auto next = std::ranges::find_if(
            agenda, [](const AgendaEvent& one) { return one.state != AgendaState::current; });
        const AgendaEvent* found = next == agenda.end() ? nullptr : &*next;
        const Console& console = context.console();
        if (json_) {
            console.out() << json(found) << "\n";
        } else if (found) {
            console.out() << line(*found, context) << "\n";
        } else {
            console.err() << companionText(*context.environment(), "Next.none") << "\n";
        }
        return ExitCode::done;
    }

  private:
    static std::string json(const AgendaEvent* found) {
        auto answer = platform::JsonValue::object();
        if (found) answer.set("state", rawValue(found->state));
        answer.set("event", found ? eventJson(*found->event) : platform::JsonValue(nullptr));
        return writeJson(answer, 2);
    }

    static std::string line(const AgendaEvent& found, CommandContext& context) {
        const Formatters& formatters = context.core().formatters();
        const platform::Date now = context.now();
        const Console& console = context.console();
        return console.bold(titleOf(*found.event, *context.environment())) + ", " +
               timesText(*found.event, formatters, now) + ", " +
               formatters.relativeDefault().string(found.event->startDate, now);
    }

    bool json_ = false;
};

}  // namespace

std::unique_ptr<Command> makeNextCommand() {
    return std::make_unique<NextCommand>();
}

}  // namespace hbr
