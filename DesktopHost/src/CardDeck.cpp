#include "CardDeck.h"

#include <Foundation/MainQueue.h>
#include <HbrCore/DeepLinks/LinkOpener.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrLocalization/L10n.h>

#include <utility>

namespace hbr {

CardDeck::CardDeck(CoreServices& core, platform::DesktopSession& session,
                   std::shared_ptr<platform::WakeSchedule> wakes)
    : core_(core),
      session_(session),
      wakes_(std::move(wakes)),
      deepLinks_(core),
      opener_(core.parser().services(), platform::Workspace::shared()) {}

CardDeck::~CardDeck() = default;

void CardDeck::open(const platform::Url& url) {
    const auto link = DeepLinkBuilder().make(url);
    if (!link) return show("message", messageCard(L10n::General::unknown(), url.absoluteString()));
    take(deepLinks_.perform(*link));
}

void CardDeck::preview(const Event& event) {
    const std::string name = "event " + event.id;
    platform::Card card = eventCard(core_, event, actions());
    const auto change = card.changesAt;
    show(name, std::move(card));
    Shown& shown = windows_[name];
    shown.event = event;
    if (!shown.change) shown.change = wakes_->add([this, name] { renew(name); });
    shown.change->set(change);
}

void CardDeck::renew(const std::string& name) {
    Shown& shown = windows_[name];
    platform::Card card = eventCard(core_, *shown.event, actions());
    shown.change->set(card.changesAt);
    shown.window->setCard(std::move(card));
}

void CardDeck::refresh() {
    for (auto& [name, shown] : windows_) {
        if (!shown.event) continue;
        shown.event = asItNowStands(core_, *shown.event);
        if (!shown.event) {
            shown.change.reset();
            close(name);
            continue;
        }
        renew(name);
    }
}

void CardDeck::take(const DeepLinkOutcome& outcome) {
    using Kind = DeepLinkOutcome::Kind;
    switch (outcome.kind) {
        case Kind::opened:
            return;
        case Kind::preview:
            return preview(*outcome.event);
        case Kind::severalLinks:
            return show("calls " + outcome.event->id,
                        callChoiceCard(*outcome.event, outcome.links, actions()));
        case Kind::unknownEvent:
            return show("message", messageCard(L10n::General::noEvent(), outcome.message));
        case Kind::failed:
            return show("message",
                        messageCard(outcome.event && outcome.event->title ? *outcome.event->title
                                                                          : L10n::General::untitled(),
                                    outcome.message));
    }
}

void CardDeck::show(const std::string& name, platform::Card card) {
    if (const auto found = windows_.find(name); found != windows_.end()) {
        found->second.window->setCard(std::move(card));
        return found->second.window->present();
    }
    windows_[name].window =
        platform::CardWindow::show(session_, std::move(card),
                                   {.open =
                                        [this](const platform::Url& url) {
                                            if (const auto refusal = opener_.open(url))
                                                show("message", messageCard(url.absoluteString(), *refusal));
                                        },
                                    .closed = [this, name] { close(name); }});
}

void CardDeck::close(const std::string& name) {
    // Not inside the window's own call: one of its buttons may still be at work.
    platform::MainQueue::shared().async([this, name, alive = std::weak_ptr(isAlive_)] {
        if (!alive.lock()) return;
        windows_.erase(name);
        if (closed_) closed_();
    });
}

EventCardActions CardDeck::actions() {
    const auto answered = [this](const Event& event) {
        if (answered_) answered_(event);
    };
    return {.join =
                [this, answered](const Event& event) {
                    answered(event);
                    take(deepLinks_.joinCall(event));
                },
            .joinLink =
                [this, answered](const Event& event, const VideoConferenceLink& link) {
                    answered(event);
                    take(deepLinks_.joinCall(event, link));
                },
            .showInCalendar = [this](const Event& event) { take(deepLinks_.viewInCalendar(event.id)); },
            .snooze =
                [this, answered](const Event& event, std::int64_t minutes) {
                    answered(event);
                    core_.manager().snooze(event, minutes);
                },
            .snoozeUntilEvent =
                [this, answered](const Event& event) {
                    answered(event);
                    core_.manager().snoozeUntilTimeOfEvent(event);
                },
            .leaveOut =
                [this, answered](const Event& event) {
                    answered(event);
                    core_.eventSettings().updateCustomSettings(
                        event.id, event.type, [](EventSettings& settings) { settings.isExcluded = true; });
                    core_.manager().reloadEvents(true);
                }};
}

}  // namespace hbr
