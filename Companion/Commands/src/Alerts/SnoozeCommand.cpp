#include "Alerts/ReminderText.h"
#include "Event/EventChoice.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Setup/DesktopProgram.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Workspace/SessionApplicationClient.h>
#include <CLI/App.hpp>

#include <HbrCore/DeepLinks/DesktopApplication.h>
#include <HbrCore/Events/EventTiming.h>

namespace hbr {

namespace {

/// Snoozes an alert. An own reminder is moved; other alerts are snoozed by the desktop program.
class SnoozeCommand final : public Command {
  public:
    std::string_view name() const override { return "snooze"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override { return "Snooze the alert of an event"; }
    std::string_view examples() const override {
        return "  heedbanner snooze next --minutes 5     alerts again in five minutes\n"
               "  heedbanner snooze next --until-start   alerts again when it begins\n"
               "  heedbanner snooze planning --clear     ends the snooze";
    }

    void declare(CLI::App& app) override {
        app.add_option("EVENT", wanted_, eventArgumentMeaning)->type_name("")->required();
        app.add_option("--minutes", minutes_, "That many minutes from now; a reminder of your own is moved")
            ->type_name("N")
            ->check(CLI::Range(1, 7 * 24 * 60));
        app.add_flag("--until-start", untilStart_, "Until it begins");
        app.add_flag("--clear", clear_, "End the snooze");
    }

    ExitCode run(CommandContext& context) override {
        if ((minutes_ > 0) + untilStart_ + clear_ != 1) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Snooze.sayHow"));
        }
        const Event event = chosenEvent(context, wanted_);
        if (event.type == Event::EventType::hbrReminder && minutes_ > 0) return move(context, event);

        const platform::SessionApplicationClient desktop(desktopApplication::identifier);
        if (!desktop.isRunning()) {
            throw CommandFailure(ExitCode::failed, about(context, event,
                                                         desktopProgram() ? "Snooze.desktopNotRunning"
                                                                          : "Snooze.desktopNotInstalled"));
        }
        if (untilStart_ && !isInFuture(event, context.now())) {
            throw CommandFailure(ExitCode::nothingThere, about(context, event, "Snooze.hasBegun"));
        }
        const std::string how = clear_        ? desktopApplication::clear
                                : untilStart_ ? desktopApplication::untilStart
                                              : std::to_string(minutes_);
        if (const auto failure = desktop.activateAction(desktopApplication::action::snooze, {event.id, how}))
            throw CommandFailure(ExitCode::failed, *failure);
        const std::string title = titleOf(event, *context.environment());
        const std::int64_t minutes = minutes_;
        context.console().out() << (clear_ || untilStart_
                                        ? companionText(*context.environment(),
                                                        clear_ ? "Snooze.cleared" : "Snooze.untilStart",
                                                        {title})
                                        : companionText(*context.environment(), "Snooze.minutes",
                                                        {title, minutes}))
                                << "\n";
        return ExitCode::done;
    }

  private:
    static std::string about(CommandContext& context, const Event& event, std::string_view key) {
        const std::string title = quotedTitle(event, *context.environment());
        return companionText(*context.environment(), key, {title});
    }

    ExitCode move(CommandContext& context, const Event& event) const {
        CustomRemindersStore& store = context.core().reminders();
        const auto before = store.reminder(event.id);
        if (!before) throw CommandFailure(ExitCode::nothingThere, about(context, event, "Snooze.gone"));
        context.core().manager().snooze(event, minutes_);
        const auto after = store.reminder(event.id);
        if (!after || after->date() == before->date())
            throw CommandFailure(ExitCode::failed, about(context, event, "Snooze.notMoved"));
        context.console().out() << reminderLine(*after, context, context.now()) << "\n";
        return ExitCode::done;
    }

    std::string wanted_;
    int minutes_ = 0;
    bool untilStart_ = false;
    bool clear_ = false;
};

}  // namespace

std::unique_ptr<Command> makeSnoozeCommand() {
    return std::make_unique<SnoozeCommand>();
}

}  // namespace hbr
