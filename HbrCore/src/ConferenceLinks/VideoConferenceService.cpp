#include <HbrCore/ConferenceLinks/VideoConferenceService.h>

#include <Values/KeyedDecoder.h>
#include <Values/Uuid.h>

#include "ServicePatterns.h"

namespace hbr {

VideoConferenceService VideoConferenceService::make(std::string regex, std::string name,
                                                    bool supportsNativeApp) {
    return {platform::Uuid::random().uuidString(), std::move(regex), std::move(name), supportsNativeApp};
}

bool VideoConferenceService::matches(const platform::Url& url) const {
    const auto* pattern = compiledServicePattern(regex);
    return pattern && pattern->search(textForServicePatterns(url)) == ServicePattern::Outcome::match;
}

platform::JsonValue JsonCoding<VideoConferenceService>::encode(const VideoConferenceService& service) {
    auto record = platform::JsonValue::object();
    record.set("id", service.id)
        .set("regex", service.regex)
        .set("name", service.name)
        .set("supportsNativeApp", service.supportsNativeApp);
    return record;
}

VideoConferenceService JsonCoding<VideoConferenceService>::decode(const platform::JsonValue& json) {
    const platform::KeyedDecoder record(json);
    return {record.string("id"), record.string("regex"), record.string("name"),
            record.boolean("supportsNativeApp")};
}

}  // namespace hbr
