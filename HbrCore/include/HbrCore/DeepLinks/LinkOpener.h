#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceService.h>
#include <System/Environment.h>
#include <TimeAndText/Url.h>
#include <Workspace/Workspace.h>

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// The one way by which addresses from calendars reach other programs. Anybody can put an address into an
/// invitation, so only web pages (https and http with a host) and the schemes of conference programs are
/// opened; a file, a script or a share never is.
class LinkOpener {
  public:
    /// `services`: the known ones; one whose pattern begins with a scheme of its own ("mumble://") allows it.
    /// `environment`: its language is that of the messages.
    LinkOpener(const std::vector<VideoConferenceService>& services,
               std::shared_ptr<platform::Workspace> workspace, platform::EnvironmentRef environment);

    /// Why the address is never opened, as one line for the user; nothing when it may be.
    std::optional<std::string> refusal(const platform::Url& url) const;
    /// Nothing when a program was started, else why not.
    std::optional<std::string> open(const platform::Url& url) const;
    /// Whether the address may be opened and a program for its scheme is installed.
    bool canOpen(const platform::Url& url) const;

  private:
    std::set<std::string, std::less<>> callSchemes_;
    std::shared_ptr<platform::Workspace> workspace_;
    platform::EnvironmentRef environment_;
};

}  // namespace hbr
