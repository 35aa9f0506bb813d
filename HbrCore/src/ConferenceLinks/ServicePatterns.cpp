#include "ServicePatterns.h"

#include <Foundation/Text.h>
#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>
#include <MxLogger/MxLogger.h>

#include <mutex>
#include <optional>
#include <shared_mutex>
#include <unordered_map>

namespace hbr {

const platform::RegularExpression* compiledServicePattern(const std::string& regex) {
    static std::shared_mutex mutex;
    static std::unordered_map<std::string, std::optional<platform::RegularExpression>> patterns;
    const auto pointerTo = [](const auto& entry) { return entry.second ? &*entry.second : nullptr; };
    {
        std::shared_lock lock(mutex);
        if (auto known = patterns.find(regex); known != patterns.end()) return pointerTo(*known);
    }
    std::optional<platform::RegularExpression> compiled;
    std::string failure;
    try {
        compiled.emplace(regex);
    } catch (const platform::RegularExpression::Error& error) {
        failure = error.what();
    }
    bool isNew = false;
    const platform::RegularExpression* pattern = nullptr;
    {
        std::unique_lock lock(mutex);
        const auto [entry, inserted] = patterns.emplace(regex, std::move(compiled));
        isNew = inserted;
        pattern = pointerTo(*entry);
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
