#include "NativeUrl.h"

#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>

#include <string>
#include <string_view>

namespace hbr {

namespace {

std::optional<platform::Url> zoomNativeUrl(const platform::Url& url) {
    const auto host = url.host();
    if (!host) return std::nullopt;
    auto text = "zoommtg://" + *host + "/join?confno=" + url.lastPathComponent();
    if (const auto password = url.queryValue("pwd")) text += "&pwd=" + *password;
    return platform::Url::parse(text);
}

std::optional<platform::Url> teamsNativeUrl(const platform::Url& url) {
    constexpr std::string_view webOrigin = "https://teams.microsoft.com";
    constexpr std::string_view nativeOrigin = "msteams:";
    auto text = url.absoluteString();
    for (std::size_t at = 0; (at = text.find(webOrigin, at)) != std::string::npos; at += nativeOrigin.size())
        text.replace(at, webOrigin.size(), nativeOrigin);
    return platform::Url::parse(text);
}

}  // namespace

std::optional<platform::Url> nativeUrlOf(const VideoConferenceLink& link) {
    const auto target = unwrappedOutlookSafelinkUrl(link.url).value_or(link.url);
    if (link.service == VideoConferenceService::zoom()) return zoomNativeUrl(target);
    if (link.service == VideoConferenceService::microsoftTeams()) return teamsNativeUrl(target);
    return std::nullopt;
}

}  // namespace hbr
