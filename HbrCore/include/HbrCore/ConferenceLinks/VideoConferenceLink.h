#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceService.h>
#include <TimeAndText/Url.h>

#include <cstddef>
#include <optional>
#include <string>

namespace hbr {

/// A link of a service as found in a text: redirects unwrapped, a safe link kept in its wrapped form.
struct VideoConferenceLink {
    VideoConferenceService service;
    platform::Url url;

    static const VideoConferenceLink& demo();

    bool isGoogle() const;
    /// Lets the user pick the account of that address first; without one, the link's target.
    platform::Url makeGoogleUrl(const std::optional<std::string>& accountEmail) const;

    friend bool operator==(const VideoConferenceLink&, const VideoConferenceLink&) = default;
};

/// Both keys are required.
template <>
struct JsonCoding<VideoConferenceLink> {
    static platform::JsonValue encode(const VideoConferenceLink& link);
    static VideoConferenceLink decode(const platform::JsonValue& json);
};

}  // namespace hbr

template <>
struct std::hash<hbr::VideoConferenceLink> {
    std::size_t operator()(const hbr::VideoConferenceLink& link) const noexcept;
};
