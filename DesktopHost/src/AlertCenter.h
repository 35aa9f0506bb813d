#pragma once

#include "EventCard.h"
#include "WakeTimer.h"

#include <DesktopHost/AlertWatch.h>
#include <DesktopHost/PlacementsFile.h>
#include <Workspace/DesktopNotifications.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// Shows the user each due alert as a desktop notification, and does what its buttons ask for. What is shown
/// stays true: it is updated while its event comes nearer, and goes with the event and with the program.
/// Main thread.
class AlertCenter {
  public:
    struct Actions {
        EventCardActions event;
        /// Asked for by the user.
        std::function<void(const Event&)> preview;
        /// In place of a notification: nobody asked for it.
        std::function<void(const Event&)> presentCard;
        /// To be used for the next thing that is opened.
        std::function<void(const std::string&)> useActivationToken;
        std::function<PlacementsFile::Contents()> choices;
        /// Of the message that names so many events together.
        std::function<std::string(std::size_t)> titleOfRest;
        /// A card with a title and a text, in place of a notification.
        std::function<void(const std::string&, const std::string&)> presentMessage;
        /// After a reload: what is shown is what the calendars say.
        std::function<void()> didRefresh;
    };

    AlertCenter(CoreServices& core, std::unique_ptr<platform::DesktopNotifications> notifications,
                Actions actions);
    ~AlertCenter();

    /// Alerts that another process handled, so that they are not shown again.
    void restoreHandled(std::vector<HandledAlert> handled);
    /// The events may have changed: overdue alerts are shown, and messages say what the calendars say.
    void didReload();
    /// The clock was set or the machine slept.
    void clockChanged();
    void withdraw(const Event& event);
    /// A message of an event that is not over was neither answered nor taken back.
    bool isShowing() const { return !shown_.empty(); }
    /// The notification could not be shown: the event's card comes in its place.
    void presentOtherwise(const std::string& tag);
    /// Takes all messages back.
    void withdrawAll();
    /// The alerts that a process which takes this one's place need not show: what is still to be answered
    /// ends with this process, so the next one shows it again.
    std::vector<HandledAlert> handledAndAnswered() const;

  private:
    struct Shown {
        EventRef event;
        bool isUrgent = false;
        /// Offered by the message, in minutes.
        std::optional<std::int64_t> snooze = std::nullopt;
        platform::DesktopNotifications::Notification message = {};
        /// When the message says something else.
        std::optional<platform::Date> changesAt = std::nullopt;
    };

    void present(const AlertInvocation& invocation);
    void chosen(const std::string& tag, const std::string& key);
    /// Makes the message as of now; whether it differs from the one before.
    bool makeMessage(Shown& shown) const;
    void findOverdue();
    /// Of these messages, by tag: their events as they are now; one that would not alert any more, for
    /// instance because it was cancelled, moved or hidden, is withdrawn.
    void refreshMessages(const std::vector<std::string>& tags, const std::vector<AlertInvocation>& overdue);
    void updateMessages();
    void wakeForChange(std::optional<platform::Date> change);
    void withdraw(std::string tag);
    void addToRest(const std::string& tag, EventRef event);
    /// One message for all that are due beside those shown, if one was added.
    void presentRest();
    std::string textOfRest() const;
    /// Of events that are over.
    void tidyRest();

    CoreServices& core_;
    std::unique_ptr<platform::DesktopNotifications> notifications_;
    const Actions actions_;
    const HandledAlertsFile file_;
    WakeTimer timer_;
    WakeTimer messageTimer_;
    std::shared_ptr<AlertWatch> watch_;
    /// By tag.
    std::map<std::string, Shown> shown_;
    /// Those that one message names together.
    std::map<std::string, EventRef> rest_;
    bool isRestShown_ = true;
    /// When cards came in place of notifications, within the last minute.
    std::vector<platform::Date> cards_;
    std::optional<platform::Date> nextChange_;
    bool isSearching_ = false;
    bool searchesAgain_ = false;
    std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace hbr
