#include "Calls/CallJoining.h"

#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>

#include <HbrCore/DeepLinks/DeepLinkActions.h>
#include <HbrCore/Events/EventTiming.h>

namespace hbr {

namespace {

std::string numbered(const std::vector<VideoConferenceLink>& links) {
    std::string list;
    for (std::size_t i = 0; i < links.size(); ++i) {
        list += "\n  " + std::to_string(i + 1) + ". " + onOneLine(links[i].service.name) + "  " +
                onOneLine(links[i].url.absoluteString());
    }
    return list;
}

}  // namespace

VideoConferenceLink chosenCall(CommandContext& context, const Event& event) {
    const std::string title = quotedTitle(event, *context.environment());
    const auto text = [&](std::string_view key, std::initializer_list<L10n::FormatArgument> arguments) {
        return companionText(*context.environment(), key, arguments);
    };
    const auto& links = event.videoConferenceLinks;
    if (links.empty()) {
        throw CommandFailure(ExitCode::nothingThere, text("Call.none", {title}));
    }
    const auto stored =
        defaultVideoConferenceLink(event, context.core().eventSettings().customSettings(event.id));
    if (stored) return *stored;

    const std::string list = text("Call.several", {title}) + numbered(links);
    const Console& console = context.console();
    const GeneralOptions& options = context.options();
    if (console.isInteractive() && !options.noInput && !options.assumeYes) {
        console.err() << list << "\n";
        const std::string last = std::to_string(links.size());
        if (const auto number = console.askNumber(text("Call.which", {last}), links.size()))
            return links[*number - 1];
        throw CommandFailure(ExitCode::nothingThere, text("Call.notChosen", {}));
    }
    throw CommandFailure(ExitCode::nothingThere, list + "\n" + text("Call.chooseForGood", {event.id}));
}

void joinCall(CommandContext& context, const Event& event) {
    const auto outcome = DeepLinkActions(context.core()).joinCall(event, chosenCall(context, event));
    if (outcome.kind != DeepLinkOutcome::Kind::opened) {
        throw CommandFailure(ExitCode::failed, onOneLine(outcome.message));
    }
    const std::string title = quotedTitle(event, *context.environment());
    const std::string address = onOneLine(outcome.url->absoluteString());
    context.console().out() << companionText(*context.environment(), "Call.joining", {title, address})
                            << "\n";
}

}  // namespace hbr
