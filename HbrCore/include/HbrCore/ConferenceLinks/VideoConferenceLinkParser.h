#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>
#include <System/Environment.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// Finds the conference links of a text; results are cached (at most 20,000 texts of 32 MB together).
/// Safe from any thread.
class VideoConferenceLinkParser {
  public:
    /// The process's one parser; its creation copies and loads the services file.
    static VideoConferenceLinkParser& shared();
    /// Built-in services, then those of the services file in the environment's data directory, which is
    /// first copied there from the resources when it is missing.
    explicit VideoConferenceLinkParser(platform::EnvironmentRef environment);
    ~VideoConferenceLinkParser();

    const std::vector<VideoConferenceService>& services() const;
    /// In the order of the text.
    std::vector<VideoConferenceLink> parse(std::string_view input) const;
    /// The URL that opens the link in the service's desktop application; Zoom and Microsoft Teams only.
    std::optional<platform::Url> nativeUrl(const VideoConferenceLink& link) const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace hbr
