#include "GoogleRedirect.h"

#include <Foundation/RegularExpression.h>

namespace hbr {

platform::Url unwrappedGoogleRedirectUrl(const platform::Url& url) {
    static const platform::RegularExpression redirect(R"(https:\/\/www\.google\..*\/url\?q=*)");
    if (!redirect.matchesAnywhere(url.absoluteString())) return url;
    const auto wrapped = url.queryValue("q");
    // The redirector encodes its target once more than the query itself does.
    const auto target = wrapped ? platform::removingPercentEncoding(*wrapped) : std::nullopt;
    auto parsed = target ? platform::Url::parse(*target) : std::nullopt;
    return parsed ? *std::move(parsed) : url;
}

}  // namespace hbr
