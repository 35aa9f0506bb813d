#include <HbrCore/ConferenceLinks/VideoConferenceLink.h>

#include <algorithm>

namespace hbr {

namespace {

/// A link to the account chooser already carries its target.
platform::Url continueUrl(const platform::Url& url) {
    const auto target = url.queryValue("continue");
    auto parsed = target ? platform::Url::parse(*target) : std::nullopt;
    return parsed ? *std::move(parsed) : url;
}

void combine(std::size_t& seed, std::size_t value) {
    seed ^= value + 0x9e3779b97f4a7c15ULL + (seed << 6) + (seed >> 2);
}

}  // namespace

const VideoConferenceLink& VideoConferenceLink::demo() {
    static const VideoConferenceLink link{
        VideoConferenceService::faceTime(),
        platform::Url::parse("https://facetime.apple.com/join#123456789").value()};
    return link;
}

bool VideoConferenceLink::isGoogle() const {
    return std::ranges::find(VideoConferenceService::googleServices(), service) !=
           VideoConferenceService::googleServices().end();
}

platform::Url VideoConferenceLink::makeGoogleUrl(const std::optional<std::string>& accountEmail) const {
    const auto target = continueUrl(url);
    if (!accountEmail) return target;
    return platform::Url::parse("https://accounts.google.com/AccountChooser?Email=" + *accountEmail +
                                "&continue=" + target.absoluteString())
        .value_or(url);
}

platform::JsonValue JsonCoding<VideoConferenceLink>::encode(const VideoConferenceLink& link) {
    auto record = platform::JsonValue::object();
    record.set("service", JsonCoding<VideoConferenceService>::encode(link.service))
        .set("url", link.url.absoluteString());
    return record;
}

VideoConferenceLink JsonCoding<VideoConferenceLink>::decode(const platform::JsonValue& json) {
    const platform::KeyedDecoder record(json);
    auto service = JsonCoding<VideoConferenceService>::decode(record.value("service"));
    auto url = platform::Url::parse(record.string("url"));
    if (!url) throw platform::DecodingError("url: no URL");
    return {std::move(service), *std::move(url)};
}

}  // namespace hbr

std::size_t std::hash<hbr::VideoConferenceService>::operator()(
    const hbr::VideoConferenceService& service) const noexcept {
    std::size_t seed = 0;
    for (const auto* text : {&service.id, &service.regex, &service.name})
        hbr::combine(seed, std::hash<std::string>{}(*text));
    hbr::combine(seed, std::hash<bool>{}(service.supportsNativeApp));
    return seed;
}

std::size_t std::hash<hbr::VideoConferenceLink>::operator()(
    const hbr::VideoConferenceLink& link) const noexcept {
    auto seed = std::hash<hbr::VideoConferenceService>{}(link.service);
    hbr::combine(seed, std::hash<platform::Url>{}(link.url));
    return seed;
}
