#include "GoogleRedirect.h"

#include <string_view>

namespace hbr {

namespace {

/// Any top-level domain; the redirector's path and key may be anywhere after it.
bool isGoogleRedirect(std::string_view text) {
    constexpr std::string_view origin = "https://www.google.";
    constexpr std::string_view pathAndKey = "/url?q";
    const auto start = text.find(origin);
    return start != std::string_view::npos &&
           text.find(pathAndKey, start + origin.size()) != std::string_view::npos;
}

}  // namespace

platform::Url unwrappedGoogleRedirectUrl(const platform::Url& url) {
    if (!isGoogleRedirect(url.absoluteString())) return url;
    const auto wrapped = url.queryValue("q");
    // The redirector encodes its target once more than the query itself does.
    const auto target = wrapped ? platform::removingPercentEncoding(*wrapped) : std::nullopt;
    auto parsed = target ? platform::Url::parse(*target) : std::nullopt;
    return parsed ? *std::move(parsed) : url;
}

}  // namespace hbr
