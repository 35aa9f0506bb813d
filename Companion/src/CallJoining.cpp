#include "CallJoining.h"

#include "EventName.h"

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
    const auto& links = event.videoConferenceLinks;
    if (links.empty()) {
        throw CommandFailure(ExitCode::nothingThere, quotedTitle(event) + " has no conference link");
    }
    const auto stored =
        defaultVideoConferenceLink(event, context.core().eventSettings().customSettings(event.id));
    if (stored) return *stored;

    const std::string list = quotedTitle(event) + " has several conference links:" + numbered(links);
    const Console& console = context.console();
    const GeneralOptions& options = context.options();
    if (console.isInteractive() && !options.noInput && !options.assumeYes) {
        console.err() << list << "\n";
        if (const auto number = console.askNumber("Which one?", links.size())) return links[*number - 1];
        throw CommandFailure(ExitCode::nothingThere, "no call was chosen");
    }
    throw CommandFailure(ExitCode::nothingThere,
                         list + "\nchoose one for good with: heedbanner event set " + event.id + " --link N");
}

void joinCall(CommandContext& context, const Event& event) {
    const auto outcome = DeepLinkActions(context.core()).joinCall(event, chosenCall(context, event));
    if (outcome.kind != DeepLinkOutcome::Kind::opened) {
        throw CommandFailure(ExitCode::failed, onOneLine(outcome.message));
    }
    context.console().out() << "Joining " << quotedTitle(event) << ": "
                            << onOneLine(outcome.url->absoluteString()) << "\n";
}

}  // namespace hbr
