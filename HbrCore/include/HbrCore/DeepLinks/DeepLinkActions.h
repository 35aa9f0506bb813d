#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>
#include <HbrCore/DeepLinks/DeepLink.h>
#include <HbrCore/DeepLinks/LinkOpener.h>
#include <HbrCore/Events/Event.h>
#include <TimeAndText/Url.h>
#include <Workspace/Workspace.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

class CoreServices;

/// The result of acting on a deep link. Showing or printing it is the caller's task.
struct DeepLinkOutcome {
    enum class Kind {
        /// `event` is to be shown.
        preview,
        /// Another program was started, with `url` where it got one.
        opened,
        /// The event has several calls and the user chose none of them yet: ask, then join one of `links`.
        severalLinks,
        /// No event has the identifier.
        unknownEvent,
        /// There is an event but nothing was opened.
        failed
    };

    Kind kind = Kind::failed;
    /// Nothing for an unknown event only.
    std::optional<Event> event = std::nullopt;
    std::optional<platform::Url> url = std::nullopt;
    std::vector<VideoConferenceLink> links = {};
    /// One line for the user: what was opened, what to choose, or why nothing was opened.
    std::string message = {};
};

/// Does what a tap asks for. Main thread.
class DeepLinkActions {
  public:
    /// `core` must outlive this; each call uses the manager's current lists.
    explicit DeepLinkActions(const CoreServices& core,
                             std::shared_ptr<platform::Workspace> workspace = platform::Workspace::shared());

    DeepLinkOutcome perform(const DeepLink& link) const;

    DeepLinkOutcome preview(std::string_view eventID) const;
    /// Opens the event's own web page (the address of a call is not one); without one brings the calendar
    /// program up. No file is handed to it: calendar programs take that for something to import.
    DeepLinkOutcome viewInCalendar(std::string_view eventID) const;
    DeepLinkOutcome joinCall(std::string_view eventID) const;
    /// Joins the only call of the event, else the one that the user chose for it.
    DeepLinkOutcome joinCall(const Event& event) const;
    /// Joins this call: in the service's own program where one is installed, else as a web page; a Google
    /// call by way of the account that the event's calendar belongs to.
    DeepLinkOutcome joinCall(const Event& event, const VideoConferenceLink& link) const;

  private:
    /// What was opened, for the user.
    std::string opened(const std::string& what) const;

    const CoreServices& core_;
    std::shared_ptr<platform::Workspace> workspace_;
    LinkOpener opener_;
};

}  // namespace hbr
