#pragma once

#include "EventCard.h"
#include "WakeTimer.h"

#include <DesktopHost/AlertWatch.h>
#include <Workspace/DesktopNotifications.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace hbr {

/// Tells the user of each due alert with a desktop notification, and does what its buttons ask for.
/// Main thread.
class AlertCenter {
  public:
    struct Actions {
        EventCardActions event;
        std::function<void(const Event&)> preview;
        /// To be used for the next thing that is opened.
        std::function<void(const std::string&)> useActivationToken;
        std::function<bool()> showsNotifications;
    };

    AlertCenter(CoreServices& core, std::unique_ptr<platform::DesktopNotifications> notifications,
                Actions actions);
    ~AlertCenter();

    /// After the first reload: alerts whose moment passed before the program ran.
    void catchUp();
    /// The clock was set or the machine slept.
    void clockChanged();
    /// Closes messages of events that are over.
    void tidy();
    void withdraw(const Event& event);
    /// A message of an event that is not over was neither answered nor taken back.
    bool isShowing() const { return !shown_.empty(); }
    /// The notification could not be shown: the event's card comes in its place.
    void presentOtherwise(const std::string& tag);
    AlertWatch& watch() { return *watch_; }

  private:
    void present(const AlertInvocation& invocation);

    CoreServices& core_;
    std::unique_ptr<platform::DesktopNotifications> notifications_;
    const Actions actions_;
    WakeTimer timer_;
    std::shared_ptr<AlertWatch> watch_;
    /// By tag.
    std::map<std::string, Event> shown_;
};

}  // namespace hbr
