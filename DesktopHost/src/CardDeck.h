#pragma once

#include "EventCard.h"
#include "MainQueueCalls.h"

#include <Desktop/CardWindow.h>
#include <Desktop/DesktopSession.h>
#include <HbrCore/DeepLinks/DeepLinkActions.h>
#include <System/WakeSchedule.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace hbr {

/// Acts on deep links and keeps the card windows that come of it, one for each thing shown. Main thread.
class CardDeck {
  public:
    CardDeck(CoreServices& core, const platform::WidgetBundle& bundle, platform::DesktopSession& session,
             std::shared_ptr<platform::WakeSchedule> wakes);
    ~CardDeck();

    /// A deep link; any other link is reported to the user as unknown.
    void open(const platform::Url& url);
    void preview(const Event& event);
    /// As `preview`, without being asked by the user: keyboard and windows stay as they are.
    void present(const Event& event);
    void present(const std::string& name, platform::Card card);
    /// Takes the place of the card with the same name, or comes to the front.
    void show(const std::string& name, platform::Card card);

    /// What buttons of cards and notifications do.
    EventCardActions actions();
    /// Cards of events say what the calendars say by now; one whose event is gone closes.
    void refresh();
    /// Called when the user dealt with an event: joined, snoozed, left it out.
    void setAnswered(std::function<void(const Event&)> answered) { answered_ = std::move(answered); }

    /// Called after a window was closed.
    void setClosed(std::function<void()> closed) { closed_ = std::move(closed); }
    bool isShowing() const { return !windows_.empty(); }

  private:
    struct Shown {
        std::unique_ptr<platform::CardWindow> window;
        /// Of an event's card.
        std::optional<Event> event = std::nullopt;
        /// When the card says something else, or closes because nobody needs it any more.
        std::unique_ptr<platform::WakeSchedule::Alarm> change = nullptr;
    };

    /// Shows the card of the event as it is now.
    void renew(const std::string& name);
    void take(const DeepLinkOutcome& outcome);
    void show(const std::string& name, platform::Card card, platform::CardArrival arrival);
    void show(const Event& event, platform::CardArrival arrival);
    /// At that moment of the card with this name; once.
    void setChange(const std::string& name, std::optional<platform::Date> moment,
                   std::function<void()> action);
    /// Of a card that nobody asked for.
    platform::CardArrival byItself() const;
    /// In the window of the event's card, which opens if there is none.
    void replace(const Event& event, platform::Card card);
    void askAboutSeries(const Event& event);
    void hide(const Event& event, HiddenPart part);
    /// False when it cannot be stored.
    bool setHidden(const Event& event, HiddenPart part, bool isHidden);
    /// A put-off alert of what is hidden does not come.
    void forgetSnoozes(const Event& event, HiddenPart part);
    void close(const std::string& name);

    CoreServices& core_;
    const CardTexts texts_;
    platform::DesktopSession& session_;
    const std::shared_ptr<platform::WakeSchedule> wakes_;
    const DeepLinkActions deepLinks_;
    const LinkOpener opener_;
    std::function<void(const Event&)> answered_;
    std::function<void()> closed_;
    std::map<std::string, Shown> windows_;
    MainQueueCalls calls_;
};

}  // namespace hbr
