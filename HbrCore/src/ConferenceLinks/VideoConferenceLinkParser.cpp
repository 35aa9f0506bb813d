#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>
#include <MxLogger/MxLogger.h>
#include <TimeAndText/LinkDetector.h>

#include "GoogleRedirect.h"
#include "LinksCache.h"
#include "NativeUrl.h"
#include "ServiceChoice.h"
#include "ServicePatterns.h"

#include <algorithm>
#include <unordered_set>

namespace hbr {

namespace {

constexpr std::size_t mostCachedTexts = 20'000;
constexpr std::size_t mostCachedBytes = 32U << 20U;

void reportSwitchedOff(const platform::Environment& environment, const VideoConferenceService& service) {
    const auto reason = "the pattern of \"" + service.id + "\" takes too long and is not tried any more";
    MxLogger::error(LogCategory::conferenceLinks, reason);
    environment.diagnostics->report({platform::Diagnostic::Severity::warning,
                                     environment.dataDirectory / servicesFileName, std::nullopt, "regex",
                                     reason});
}

/// A link as it was meant: HTML writes "&" as "&amp;". Outside markup only the query is decoded: a path may
/// really contain these characters.
std::string decoded(std::string_view link, bool isMarkup) {
    const auto start = isMarkup ? 0 : std::min(link.find('?'), link.size());
    return std::string(link.substr(0, start)) + platform::withoutCharacterReferences(link.substr(start));
}

/// Of what a redirect held.
platform::Url decoded(platform::Url url, bool isMarkup) {
    auto result = platform::Url::parse(decoded(url.absoluteString(), isMarkup));
    return result ? *std::move(result) : std::move(url);
}

}  // namespace

struct VideoConferenceLinkParser::State {
    explicit State(std::vector<VideoConferenceService> all, platform::EnvironmentRef environment)
        : services(std::move(all)), choice(services, [this, environment](std::size_t index) {
              reportSwitchedOff(*environment, services[index]);
          }) {}

    const std::vector<VideoConferenceService> services;
    const ServiceChoice choice;
    LinksCache linksCache{mostCachedTexts, mostCachedBytes};

    const VideoConferenceService* serviceOf(const platform::Url& url) const {
        const auto index = choice.firstMatch(textForServicePatterns(url));
        return index ? &services[*index] : nullptr;
    }

    std::vector<VideoConferenceLink> findLinks(std::string_view input) const {
        std::vector<VideoConferenceLink> links;
        std::unordered_set<platform::Url> seen;
        const bool isMarkup = platform::isMarkup(input);
        for (const auto& found : platform::detectLinks(input)) {
            const auto piece = input.substr(found.start, found.end - found.start);
            const auto written = platform::Url::parse(decoded(piece, isMarkup));
            if (!written) continue;
            auto url = decoded(unwrappedGoogleRedirectUrl(*written), isMarkup);
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

VideoConferenceLinkParser::VideoConferenceLinkParser(platform::EnvironmentRef environment) {
    auto services = VideoConferenceService::all();
    copyConfigFileIfNeeded(*environment);
    loadConfigFile(*environment, services);
    state_ = std::make_unique<State>(std::move(services), std::move(environment));
}

VideoConferenceLinkParser::~VideoConferenceLinkParser() = default;

const std::vector<VideoConferenceService>& VideoConferenceLinkParser::services() const {
    return state_->services;
}

std::vector<VideoConferenceLink> VideoConferenceLinkParser::parse(std::string_view input) const {
    if (const auto cached = state_->linksCache.find(input)) return *cached;
    auto links = std::make_shared<const std::vector<VideoConferenceLink>>(state_->findLinks(input));
    state_->linksCache.store(input, links);
    return *links;
}

std::optional<platform::Url> VideoConferenceLinkParser::nativeUrl(const VideoConferenceLink& link) const {
    return nativeUrlOf(link);
}

}  // namespace hbr
