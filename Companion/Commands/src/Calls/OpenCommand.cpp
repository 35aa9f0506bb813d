#include "Calls/CallJoining.h"
#include "Event/EventCard.h"
#include "Framework/Command.h"

#include <Session/CommandContext.h>
#include <Words/CompanionText.h>
#include <Words/OneLine.h>
#include <Workspace/SessionApplicationClient.h>
#include <CLI/App.hpp>

#include <HbrCore/DeepLinks/DeepLinkActions.h>
#include <HbrCore/DeepLinks/DesktopApplication.h>

namespace hbr {

namespace {

/// Acts on a deep link. The desktop runs it when such a link is opened anywhere.
class OpenCommand final : public Command {
  public:
    std::string_view name() const override { return "open"; }
    std::string_view group() const override { return commandGroup::everyDay; }
    std::string_view summary() const override {
        return "Act on a link of the widgets: show, join, or open the calendar";
    }
    std::string_view examples() const override {
        return "  heedbanner open heedbanner://preview/ID          all about the event\n"
               "  heedbanner open heedbanner://joinCall/ID         join its call\n"
               "  heedbanner open heedbanner://viewInCalendar/ID   its web page, else the calendar program";
    }

    void declare(CLI::App& app) override {
        app.add_option("URL", url_, "heedbanner://ACTION/ID; agenda --ids shows the ids")
            ->type_name("")
            ->required();
    }

    ExitCode run(CommandContext& context) override {
        const auto url = platform::Url::parse(url_);
        const auto link = url ? DeepLinkBuilder().make(*url) : nullptr;
        if (!link) {
            throw CommandFailure(ExitCode::wrongUsage,
                                 companionText(*context.environment(), "Open.refused", {onOneLine(url_)}));
        }
        // Own reminders have links too, so missing accounts matter only when nothing was found.
        reloadAndWait(context.core());
        const DeepLinkActions actions(context.core());
        const DeepLinkOutcome outcome = link->destination() == DeepLinkDestination::viewInCalendar
                                            ? actions.perform(*link)
                                            : actions.preview(link->eventIdentifier());
        if (outcome.kind == DeepLinkOutcome::Kind::unknownEvent) {
            context.requireReadableAccounts();
            throw CommandFailure(ExitCode::nothingThere, onOneLine(outcome.message));
        }
        if (link->destination() != DeepLinkDestination::preview || !isShownOnDesktop(*url))
            act(context, link->destination(), outcome);
        return ExitCode::done;
    }

  private:
    /// Shows it in the desktop program, if that runs or the session can start it.
    static bool isShownOnDesktop(const platform::Url& url) {
        const platform::SessionApplicationClient desktop(desktopApplication::identifier);
        return desktop.isReachable() && !desktop.open({url});
    }

    static void act(CommandContext& context, DeepLinkDestination destination,
                    const DeepLinkOutcome& outcome) {
        switch (destination) {
            case DeepLinkDestination::preview:
                context.console().out() << eventCard(context, *outcome.event);
                return;
            case DeepLinkDestination::joinCall:
                return joinCall(context, *outcome.event);
            case DeepLinkDestination::viewInCalendar:
                break;
        }
        if (outcome.kind != DeepLinkOutcome::Kind::opened) {
            throw CommandFailure(ExitCode::failed, onOneLine(outcome.message));
        }
        context.console().out() << onOneLine(outcome.message) << "\n";
    }

    std::string url_;
};

}  // namespace

std::unique_ptr<Command> makeOpenCommand() {
    return std::make_unique<OpenCommand>();
}

}  // namespace hbr
