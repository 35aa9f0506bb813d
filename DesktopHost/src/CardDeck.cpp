#include "CardDeck.h"

#include <HbrCore/DeepLinks/LinkOpener.h>
#include <HbrCore/Events/EventLookup.h>
#include <HbrCore/Events/EventTexts.h>
#include <HbrLocalization/L10n.h>

#include <utility>

namespace hbr {

namespace {

/// For how long what was hidden can be shown again in its card, in seconds.
constexpr double undoPeriod = 60;

std::string nameOf(const Event& event) {
    return "event " + event.id;
}

}  // namespace

CardDeck::CardDeck(CoreServices& core, const platform::WidgetBundle& bundle,
                   platform::DesktopSession& session, std::shared_ptr<platform::WakeSchedule> wakes)
    : core_(core),
      texts_(core, bundle),
      session_(session),
      wakes_(std::move(wakes)),
      deepLinks_(core),
      opener_(core.parser().services(), platform::Workspace::shared(), core.environment()) {}

CardDeck::~CardDeck() = default;

void CardDeck::open(const platform::Url& url) {
    const auto link = DeepLinkBuilder().make(url);
    if (!link)
        return show("message", messageCard(*core_.environment(), L10n::General::unknown(*core_.environment()),
                                           url.absoluteString()));
    auto outcome = deepLinks_.perform(*link);
    if (outcome.kind == DeepLinkOutcome::Kind::unknownEvent) {
        // Its file may have been written a moment ago.
        core_.aggregatedEventStore().refreshData();
        outcome = deepLinks_.perform(*link);
    }
    take(outcome);
}

void CardDeck::preview(const Event& event) {
    show(event, {});
}

void CardDeck::present(const Event& event) {
    show(event, byItself());
}

void CardDeck::present(const std::string& name, platform::Card card) {
    show(name, std::move(card), byItself());
}

platform::CardArrival CardDeck::byItself() const {
    return {.isByItself = true, .keyDelay = static_cast<double>(core_.settings().keyboardShortcutsDelay())};
}

void CardDeck::show(const Event& event, platform::CardArrival arrival) {
    const std::string name = nameOf(event);
    platform::Card card = eventCard(core_, texts_, event, actions());
    const auto change = card.changesAt;
    show(name, std::move(card), arrival);
    windows_[name].event = event;
    setChange(name, change, [this, name] { renew(name); });
}

void CardDeck::setChange(const std::string& name, std::optional<platform::Date> moment,
                         std::function<void()> action) {
    auto& change = windows_[name].change;
    change = wakes_->add(std::move(action));
    change->set(moment);
}

void CardDeck::renew(const std::string& name) {
    Shown& shown = windows_[name];
    platform::Card card = eventCard(core_, texts_, *shown.event, actions());
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
                        callChoiceCard(texts_, *outcome.event, outcome.links, actions()));
        case Kind::unknownEvent:
            return show("message",
                        messageCard(*core_.environment(), L10n::General::noEvent(*core_.environment()),
                                    outcome.message));
        case Kind::failed:
            return show("message",
                        messageCard(*core_.environment(),
                                    titleOrUntitled(outcome.event.value_or(Event{}), *core_.environment()),
                                    outcome.message));
    }
}

void CardDeck::show(const std::string& name, platform::Card card) {
    show(name, std::move(card), {});
}

void CardDeck::show(const std::string& name, platform::Card card, platform::CardArrival arrival) {
    if (const auto found = windows_.find(name); found != windows_.end()) {
        found->second.event.reset();
        found->second.change.reset();
        found->second.window->setCard(std::move(card));
        if (!arrival.isByItself) found->second.window->present();
        return;
    }
    windows_[name].window = platform::CardWindow::show(
        session_, std::move(card),
        {.open =
             [this](const platform::Url& url) {
                 if (const auto refusal = opener_.open(url))
                     show("message", messageCard(*core_.environment(), url.absoluteString(), *refusal));
             },
         .closed = [this, name] { close(name); }},
        arrival);
}

void CardDeck::replace(const Event& event, platform::Card card) {
    show(nameOf(event), std::move(card), {});
}

bool CardDeck::setHidden(const Event& event, HiddenPart part, bool isHidden) {
    bool isStored = false;
    if (part == HiddenPart::occurrence) {
        const HiddenOccurrencesStore store = core_.hiddenOccurrences();
        const platform::Date now = core_.environment()->now();
        if (const auto one = occurrenceOf(core_, event))
            isStored = isHidden ? store.hide(*one, now) : store.show(*one, now);
    } else {
        isStored = core_.eventSettings().updateCustomSettings(
            event.id, event.type, [isHidden](EventSettings& settings) { settings.isExcluded = isHidden; });
    }
    if (isStored && isHidden) forgetSnoozes(event, part);
    core_.manager().reloadEvents(true);
    return isStored;
}

void CardDeck::forgetSnoozes(const Event& event, HiddenPart part) {
    for (const AlertInvocation& snooze : core_.manager().snoozedInvocations()) {
        if (snooze.event->id != event.id) continue;
        if (part == HiddenPart::all || snooze.event->startDate == event.startDate)
            core_.manager().didHandleAlertInvocation(snooze);
    }
}

void CardDeck::askAboutSeries(const Event& event) {
    std::function<void()> hideOne;
    if (occurrenceOf(core_, event)) hideOne = [this, event] { hide(event, HiddenPart::occurrence); };
    replace(event, hidingQuestionCard(
                       texts_, event, std::move(hideOne), [this, event] { hide(event, HiddenPart::all); },
                       [this, event] { preview(event); }));
}

void CardDeck::hide(const Event& event, HiddenPart part) {
    if (!setHidden(event, part, true)) {
        const bool isGone = part == HiddenPart::occurrence && !occurrenceOf(core_, event);
        return replace(event, notHiddenCard(texts_, event, isGone));
    }
    if (answered_) answered_(event);
    replace(event, hiddenCard(core_, texts_, event, part, [this, event, part] {
                setHidden(event, part, false);
                preview(event);
            }));
    setChange(nameOf(event), core_.environment()->now().addingTimeInterval(undoPeriod),
              [this, name = nameOf(event)] { close(name); });
}

void CardDeck::close(const std::string& name) {
    // Not inside the window's own call: one of its buttons may still be at work.
    calls_.later([this, name] {
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
            .hide =
                [this](const Event& event) {
                    if (event.isRecurring) return askAboutSeries(event);
                    hide(event, HiddenPart::all);
                },
            .showAgain =
                [this](const Event& event) {
                    setHidden(event, hiddenPart(core_, event), false);
                    preview(event);
                }};
}

}  // namespace hbr
