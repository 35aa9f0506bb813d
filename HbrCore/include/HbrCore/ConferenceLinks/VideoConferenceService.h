#pragma once

#include <HbrUtils/JsonCoding.h>
#include <TimeAndText/Url.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace hbr {

/// A video-conference service and the pattern (ICU syntax) that a link to it contains.
struct VideoConferenceService {
    std::string id;
    std::string regex;
    std::string name;
    bool supportsNativeApp = false;

    /// A service without a given id gets a fresh random one.
    static VideoConferenceService make(std::string regex, std::string name, bool supportsNativeApp);

    /// The 25 built-in services in their order of precedence.
    static const std::vector<VideoConferenceService>& all();
    static const std::vector<VideoConferenceService>& googleServices();
    static const VideoConferenceService& googleHangouts();
    static const VideoConferenceService& googleMeet();
    static const VideoConferenceService& zoom();
    static const VideoConferenceService& zoomNative();
    static const VideoConferenceService& webex();
    static const VideoConferenceService& webexWebinar();
    static const VideoConferenceService& microsoftTeams();
    static const VideoConferenceService& goTo();
    static const VideoConferenceService& goToWebinar();
    static const VideoConferenceService& bluejeans();
    static const VideoConferenceService& joinMe();
    static const VideoConferenceService& whereby();
    static const VideoConferenceService& ringCentral();
    static const VideoConferenceService& amazonChime();
    static const VideoConferenceService& faceTime();
    static const VideoConferenceService& jitsi();
    static const VideoConferenceService& youcanbookme();
    static const VideoConferenceService& entre();
    static const VideoConferenceService& riverside();
    static const VideoConferenceService& slackHuddle();
    static const VideoConferenceService& metaWorkplace();
    static const VideoConferenceService& skype();
    static const VideoConferenceService& around();
    static const VideoConferenceService& teamSpeakNative();
    static const VideoConferenceService& doxyMe();

    /// Searches the lower-cased text of the URL, or of its safe-link target, for the pattern. A pattern
    /// that does not compile is logged once and never matches; one that exceeds its limit of steps does not
    /// match.
    bool matches(const platform::Url& url) const;

    friend bool operator==(const VideoConferenceService&, const VideoConferenceService&) = default;
};

/// All keys are required.
template <>
struct JsonCoding<VideoConferenceService> {
    static platform::JsonValue encode(const VideoConferenceService& service);
    static VideoConferenceService decode(const platform::JsonValue& json);
};

}  // namespace hbr

template <>
struct std::hash<hbr::VideoConferenceService> {
    std::size_t operator()(const hbr::VideoConferenceService& service) const noexcept;
};
