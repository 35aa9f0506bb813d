#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>

#include <string_view>

namespace hbr {

namespace {

constexpr std::string_view safeLinksHost = "safelinks.protection.outlook.com";

}  // namespace

bool isOutlookSafeLink(const platform::Url& url) {
    return url.absoluteString().find(safeLinksHost) != std::string::npos;
}

std::optional<platform::Url> unwrappedOutlookSafelinkUrl(const platform::Url& url) {
    if (!isOutlookSafeLink(url)) return std::nullopt;
    const auto target = url.queryValue("url");
    return target ? platform::Url::parse(*target) : std::nullopt;
}

}  // namespace hbr
