#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <Foundation/LinkDetector.h>
#include <Foundation/Text.h>
#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>

#include "GoogleRedirect.h"
#include "LinksCache.h"
#include "NativeUrl.h"
#include "ServicePatterns.h"

#include <unordered_set>

namespace hbr {

namespace {

constexpr std::size_t cacheLimit = 20'000;

}  // namespace

struct VideoConferenceLinkParser::State {
    std::vector<VideoConferenceService> services;
    /// One for each service; nullptr where the pattern does not compile.
    std::vector<const platform::RegularExpression*> patterns;
    LinksCache linksCache{cacheLimit};

    const VideoConferenceService* serviceOf(const platform::Url& url) const {
        const auto text = textForServicePatterns(url);
        for (std::size_t i = 0; i < services.size(); ++i) {
            if (patterns[i] && patterns[i]->matchesAnywhere(text)) return &services[i];
        }
        return nullptr;
    }

    std::vector<VideoConferenceLink> findLinks(std::string_view input) const {
        std::vector<VideoConferenceLink> links;
        std::unordered_set<platform::Url> seen;
        for (const auto& found : platform::detectLinks(input)) {
            const auto written = platform::Url::parse(input.substr(found.start, found.end - found.start));
            if (!written) continue;
            auto url = unwrappedGoogleRedirectUrl(*written);
            if (!seen.insert(url).second) continue;
            if (const auto* service = serviceOf(url)) links.push_back({*service, std::move(url)});
        }
        return links;
    }
};

VideoConferenceLinkParser& VideoConferenceLinkParser::shared() {
    static VideoConferenceLinkParser parser(platform::Environment::current());
    return parser;
}

VideoConferenceLinkParser::VideoConferenceLinkParser(platform::EnvironmentRef environment)
    : state_(std::make_unique<State>()) {
    state_->services = VideoConferenceService::all();
    copyConfigFileIfNeeded(*environment);
    loadConfigFile(*environment, state_->services);
    state_->patterns.reserve(state_->services.size());
    for (const auto& service : state_->services)
        state_->patterns.push_back(compiledServicePattern(service.regex));
}

VideoConferenceLinkParser::~VideoConferenceLinkParser() = default;

const std::vector<VideoConferenceService>& VideoConferenceLinkParser::services() const {
    return state_->services;
}

std::vector<VideoConferenceLink> VideoConferenceLinkParser::parse(std::string_view input) const {
    const auto key = platform::crc32(input);
    if (const auto cached = state_->linksCache.find(key)) return *cached;
    auto links = std::make_shared<const std::vector<VideoConferenceLink>>(state_->findLinks(input));
    state_->linksCache.store(key, links);
    return *links;
}

std::optional<platform::Url> VideoConferenceLinkParser::nativeUrl(const VideoConferenceLink& link) const {
    return nativeUrlOf(link);
}

}  // namespace hbr
