#pragma once

#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>

#include <optional>

namespace hbr {

/// For the services whose desktop application opens links of its own; the safe-link target is used.
std::optional<platform::Url> nativeUrlOf(const VideoConferenceLink& link);

}  // namespace hbr
