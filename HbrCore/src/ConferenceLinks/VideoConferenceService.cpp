#include <HbrCore/ConferenceLinks/VideoConferenceService.h>

#include <Foundation/Uuid.h>

#include "ServicePatterns.h"

namespace hbr {

VideoConferenceService VideoConferenceService::make(std::string regex, std::string name,
                                                    bool supportsNativeApp) {
    return {platform::Uuid::random().uuidString(), std::move(regex), std::move(name), supportsNativeApp};
}

bool VideoConferenceService::matches(const platform::Url& url) const {
    const auto* pattern = compiledServicePattern(regex);
    return pattern && pattern->matchesAnywhere(textForServicePatterns(url));
}

}  // namespace hbr
