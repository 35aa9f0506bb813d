#pragma once

#include "EventCard.h"

#include <Desktop/CardWindow.h>
#include <Desktop/DesktopSession.h>
#include <HbrCore/DeepLinks/DeepLinkActions.h>

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace hbr {

/// Acts on deep links and keeps the card windows that come of it, one for each thing shown. Main thread.
class CardDeck {
  public:
    CardDeck(CoreServices& core, platform::DesktopSession& session);
    ~CardDeck();

    /// A deep link; anything else is told the user as unknown.
    void open(const platform::Url& url);
    void preview(const Event& event);
    /// Takes the place of the card with the same name, or comes to the front.
    void show(const std::string& name, platform::Card card);

    /// What buttons of cards and notifications do.
    EventCardActions actions();
    /// Called when the user dealt with an event: joined, snoozed, left it out.
    void setAnswered(std::function<void(const Event&)> answered) { answered_ = std::move(answered); }

  private:
    void take(const DeepLinkOutcome& outcome);
    void close(const std::string& name);

    CoreServices& core_;
    platform::DesktopSession& session_;
    const DeepLinkActions deepLinks_;
    const LinkOpener opener_;
    std::function<void(const Event&)> answered_;
    std::map<std::string, std::unique_ptr<platform::CardWindow>> windows_;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace hbr
