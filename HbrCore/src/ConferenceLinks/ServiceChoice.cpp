#include "ServiceChoice.h"

#include "NecessaryTexts.h"

#include <algorithm>
#include <cstring>
#include <unordered_map>
#include <utility>

namespace hbr {

namespace {

std::uint32_t bytesAt(const char* text) {
    std::uint32_t bytes = 0;
    std::memcpy(&bytes, text, sizeof bytes);
    return bytes;
}

std::size_t hashOf(std::uint32_t bytes) {
    return (bytes * 2654435761U) >> 20U;
}

}  // namespace

ServiceChoice::ServiceChoice(const std::vector<VideoConferenceService>& services, SwitchedOff switchedOff)
    : switchedOff_(std::move(switchedOff)) {
    patterns_.reserve(services.size());
    std::vector<std::vector<std::string>> texts;
    // How many necessary texts hold these bytes: the rarer, the more they say.
    std::unordered_map<std::uint32_t, int> frequency;
    for (const auto& service : services) {
        patterns_.push_back(compiledServicePattern(service.regex));
        texts.push_back(necessaryTexts(service.regex));
        for (const auto& text : texts.back()) {
            for (std::size_t i = 0; i + hintSize <= text.size(); ++i)
                ++frequency[bytesAt(text.data() + i)];
        }
    }
    const auto rarestBytes = [&frequency](const std::string& text) {
        std::uint32_t rarest = bytesAt(text.data());
        for (std::size_t i = 1; i + hintSize <= text.size(); ++i) {
            const auto bytes = bytesAt(text.data() + i);
            if (frequency[bytes] < frequency[rarest]) rarest = bytes;
        }
        return rarest;
    };
    for (std::size_t i = 0; i < services.size(); ++i) {
        if (!patterns_[i]) continue;
        const bool isUseful = !texts[i].empty() && std::ranges::all_of(texts[i], [](const std::string& text) {
            return text.size() >= hintSize && text.find_first_not_of("htps:/") != std::string::npos;
        });
        if (!isUseful) {
            always_.push_back(i);
            continue;
        }
        for (const auto& text : texts[i])
            hints_.push_back({rarestBytes(text), i});
    }
    std::ranges::sort(hints_, {}, [](const Hint& hint) { return std::pair(hint.bytes, hint.service); });
    for (const auto& hint : hints_)
        mayBeHint_.set(hashOf(hint.bytes));
}

std::vector<std::size_t> ServiceChoice::candidates(std::string_view text) const {
    std::vector<std::size_t> found = always_;
    for (std::size_t i = 0; i + hintSize <= text.size(); ++i) {
        const auto bytes = bytesAt(text.data() + i);
        if (!mayBeHint_.test(hashOf(bytes))) continue;
        const auto range = std::ranges::equal_range(hints_, bytes, {}, &Hint::bytes);
        for (const auto& hint : range)
            found.push_back(hint.service);
    }
    std::ranges::sort(found);
    found.erase(std::ranges::unique(found).begin(), found.end());
    return found;
}

std::optional<std::size_t> ServiceChoice::firstMatch(std::string_view text) const {
    for (const auto service : candidates(text)) {
        const auto outcome = patterns_[service]->search(text);
        if (outcome == ServicePattern::Outcome::match) return service;
        if (outcome == ServicePattern::Outcome::switchedOff && switchedOff_) switchedOff_(service);
    }
    return std::nullopt;
}

}  // namespace hbr
