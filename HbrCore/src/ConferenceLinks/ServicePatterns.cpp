#include "ServicePatterns.h"

#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>
#include <HbrCore/ConferenceLinks/VideoConferenceService.h>
#include <MxLogger/MxLogger.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace hbr {

namespace {

/// Ordinary patterns need a few steps for each byte; what needs more than these is running away.
std::size_t mostStepsFor(std::string_view text) {
    constexpr std::size_t always = 100'000;
    constexpr std::size_t stepsPerByte = 10;
    constexpr std::size_t mostForLength = 3'000'000;
    return always + std::min(text.size() * stepsPerByte, mostForLength);
}

/// Once may be the fault of a text made for it.
constexpr int allowedToGiveUp = 3;

bool isBuiltIn(const std::string& regex) {
    return std::ranges::find(VideoConferenceService::all(), regex, &VideoConferenceService::regex) !=
           VideoConferenceService::all().end();
}

}  // namespace

ServicePattern::ServicePattern(const std::string& regex)
    : expression_(regex), mayBeSwitchedOff_(!isBuiltIn(regex)) {}

ServicePattern::Outcome ServicePattern::search(std::string_view text) const {
    using Found = platform::RegularExpression::Outcome;
    if (givenUp_.load(std::memory_order_relaxed) >= allowedToGiveUp) return Outcome::noMatch;
    const auto found = expression_.search(text, mostStepsFor(text));
    if (found == Found::match) return Outcome::match;
    if (found == Found::noMatch || !mayBeSwitchedOff_ || ++givenUp_ != allowedToGiveUp)
        return Outcome::noMatch;
    return Outcome::switchedOff;
}

const ServicePattern* compiledServicePattern(const std::string& regex) {
    static std::shared_mutex mutex;
    static std::unordered_map<std::string, std::unique_ptr<const ServicePattern>> patterns;
    {
        std::shared_lock lock(mutex);
        if (auto known = patterns.find(regex); known != patterns.end()) return known->second.get();
    }
    std::unique_ptr<const ServicePattern> compiled;
    std::string failure;
    try {
        compiled = std::make_unique<const ServicePattern>(regex);
    } catch (const platform::RegularExpression::Error& error) {
        failure = error.what();
    }
    bool isNew = false;
    const ServicePattern* pattern = nullptr;
    {
        std::unique_lock lock(mutex);
        const auto [entry, inserted] = patterns.emplace(regex, std::move(compiled));
        isNew = inserted;
        pattern = entry->second.get();
    }
    if (isNew && !pattern)
        MxLogger::error(LogCategory::conferenceLinks, "A service never matches: " + failure);
    return pattern;
}

std::string textForServicePatterns(const platform::Url& url) {
    const auto target = unwrappedOutlookSafelinkUrl(url);
    return platform::lowercased((target ? *target : url).absoluteString());
}

}  // namespace hbr
