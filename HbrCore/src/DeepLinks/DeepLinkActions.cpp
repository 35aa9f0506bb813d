#include <HbrCore/DeepLinks/DeepLinkActions.h>

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>

#include <utility>

namespace hbr {

namespace {

using Kind = DeepLinkOutcome::Kind;

constexpr std::string_view calendarContentType = "text/calendar";

namespace Texts = L10n::Opening;

std::string nameOf(const Event& event, const CoreServices& core) {
    return titleOrUntitled(event, *core.environment());
}

/// Looks the event up and goes on with it.
template <class Action>
DeepLinkOutcome withEvent(const CoreServices& core, std::string_view eventID, const Action& action) {
    auto event = eventWithIdentifier(core, eventID);
    if (!event) {
        return {.kind = Kind::unknownEvent,
                .message = Texts::unknownEvent(*core.environment(), std::string(eventID))};
    }
    return action(*std::move(event));
}

/// The web page that the calendar gives for the event; the address of a call is not such a page.
std::optional<platform::Url> ownPage(const CoreServices& core, const Event& event) {
    const auto stored = core.aggregatedEventStore().eventWithIdentifier(event.id);
    if (!stored || !stored->url || !core.parser().parse(*stored->url).empty()) return std::nullopt;
    return platform::Url::parse(*stored->url);
}

}  // namespace

DeepLinkActions::DeepLinkActions(const CoreServices& core, std::shared_ptr<platform::Workspace> workspace)
    : core_(core),
      workspace_(std::move(workspace)),
      opener_(core.parser().services(), workspace_, core.environment()) {}

std::string DeepLinkActions::opened(const std::string& what) const {
    return Texts::opened(*core_.environment(), what);
}

DeepLinkOutcome DeepLinkActions::perform(const DeepLink& link) const {
    switch (link.destination()) {
        case DeepLinkDestination::preview:
            return preview(link.eventIdentifier());
        case DeepLinkDestination::viewInCalendar:
            return viewInCalendar(link.eventIdentifier());
        case DeepLinkDestination::joinCall:
            return joinCall(link.eventIdentifier());
    }
    return {};
}

DeepLinkOutcome DeepLinkActions::preview(std::string_view eventID) const {
    return withEvent(core_, eventID, [](Event event) {
        return DeepLinkOutcome{.kind = Kind::preview, .event = std::move(event)};
    });
}

DeepLinkOutcome DeepLinkActions::viewInCalendar(std::string_view eventID) const {
    return withEvent(core_, eventID, [this](Event event) {
        DeepLinkOutcome outcome{.event = std::move(event)};
        if (outcome.event->type == Event::EventType::hbrReminder) {
            outcome.message = Texts::ownReminder(*core_.environment(), nameOf(*outcome.event, core_));
            return outcome;
        }
        if (const auto page = ownPage(core_, *outcome.event); page && !opener_.refusal(*page)) {
            const auto failure = opener_.open(*page);
            outcome.kind = failure ? Kind::failed : Kind::opened;
            outcome.message = failure.value_or(opened(page->absoluteString()));
            if (!failure) outcome.url = page;
            return outcome;
        }
        const auto program = workspace_->programForContentType(calendarContentType);
        if (!program) {
            outcome.message = Texts::noCalendarProgram(*core_.environment());
            return outcome;
        }
        const auto failure = workspace_->startProgramForContentType(calendarContentType);
        outcome.kind = failure ? Kind::failed : Kind::opened;
        outcome.message = failure.value_or(opened(*program));
        return outcome;
    });
}

DeepLinkOutcome DeepLinkActions::joinCall(std::string_view eventID) const {
    return withEvent(core_, eventID, [this](const Event& event) { return joinCall(event); });
}

DeepLinkOutcome DeepLinkActions::joinCall(const Event& event) const {
    if (event.videoConferenceLinks.empty())
        return {.event = event,
                .message = Texts::noConferenceLink(*core_.environment(), nameOf(event, core_))};
    const auto chosen = defaultVideoConferenceLink(event, core_.eventSettings().customSettings(event.id));
    if (chosen) return joinCall(event, *chosen);
    return {.kind = Kind::severalLinks,
            .event = event,
            .links = event.videoConferenceLinks,
            .message = Texts::severalConferenceLinks(*core_.environment(), nameOf(event, core_))};
}

DeepLinkOutcome DeepLinkActions::joinCall(const Event& event, const VideoConferenceLink& link) const {
    // Before its program's address is made of it: that one would look harmless.
    if (auto reason = opener_.refusal(link.url)) return {.event = event, .message = *std::move(reason)};
    std::vector<platform::Url> ways;
    if (const auto native = core_.parser().nativeUrl(link); native && opener_.canOpen(*native))
        ways.push_back(*native);
    ways.push_back(link.isGoogle() ? link.makeGoogleUrl(core_.manager().accountEmailForEvent(event.id))
                                   : link.url);
    DeepLinkOutcome outcome{.event = event};
    for (const auto& url : ways) {
        const auto failure = opener_.open(url);
        outcome.message = failure.value_or(opened(url.absoluteString()));
        if (failure) continue;
        outcome.kind = Kind::opened;
        outcome.url = url;
        break;
    }
    return outcome;
}

}  // namespace hbr
