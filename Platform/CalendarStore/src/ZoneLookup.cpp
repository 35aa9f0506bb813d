#include "ZoneLookup.h"

#include <TimeAndText/Ascii.h>
#include <TimeAndText/WindowsZone.h>

#include "ItemLimits.h"

namespace platform {
namespace {

/// "Europe/Berlin" and the like; plain words only for the few that are zones of their own ("UTC").
bool looksLikeZoneName(std::string_view text) {
    return !text.empty() && text.front() != '/' && text.find("..") == std::string_view::npos &&
           text.find(' ') == std::string_view::npos;
}

/// "EUROPE/BERLIN", "america/new_york" with capitals where names of zones have them.
std::string capitalised(std::string_view name) {
    auto result = asciiLower(name);
    bool isFirst = true;
    for (char& c : result) {
        if (isFirst) c = asciiUpper(c);
        isFirst = c == '/' || c == '_' || c == '-';
    }
    return result;
}

}  // namespace

std::optional<TimeZone> ZoneLookup::find(const std::string& tzid) {
    if (const auto known = found_.find(tzid); known != found_.end()) return known->second;
    return found_.emplace(tzid, search(tzid)).first->second;
}

std::optional<TimeZone> ZoneLookup::systemZone(std::string_view tzid) const {
    tzid = trimmedAscii(tzid);
    if (tzid.size() > limits::zoneNameBytes) return std::nullopt;
    if (tzid.size() >= 2 && tzid.front() == '"' && tzid.back() == '"') tzid = tzid.substr(1, tzid.size() - 2);
    if (looksLikeZoneName(tzid)) {
        if (equalIgnoringCase(tzid, "UTC") || equalIgnoringCase(tzid, "GMT") ||
            equalIgnoringCase(tzid, "Z")) {
            return TimeZone::utc();
        }
        if (auto zone = TimeZone::named(tzid, directory_)) return zone;
        if (auto zone = TimeZone::named(capitalised(tzid), directory_)) return zone;
    }
    if (auto zone = zoneOfWindowsName(tzid, directory_)) return zone;
    // A vendor's prefix: "/example.org/Europe/Berlin", "/example.org/20211207_1/America/Argentina/Ushuaia".
    for (auto slash = tzid.find('/'); slash != std::string_view::npos; slash = tzid.find('/', slash + 1)) {
        const auto rest = tzid.substr(slash + 1);
        if (rest.find('/') == std::string_view::npos && tzid.front() != '/') break;
        if (looksLikeZoneName(rest)) {
            if (auto zone = TimeZone::named(rest, directory_)) return zone;
        }
    }
    return std::nullopt;
}

const std::vector<ZoneDefinitionRef>& ZoneLookup::definitionsNamed(std::string_view tzid) const {
    if (byName_.empty()) {
        for (const auto& definition : definitions_)
            byName_[asciiLower(definition->tzid)].push_back(definition);
    }
    static const std::vector<ZoneDefinitionRef> none;
    const auto found = byName_.find(asciiLower(tzid));
    return found == byName_.end() ? none : found->second;
}

std::optional<TimeZone> ZoneLookup::search(std::string_view tzid) const {
    if (tzid.size() > limits::zoneNameBytes) return std::nullopt;
    if (auto zone = systemZone(tzid)) return zone;
    const auto unquoted = tzid.size() >= 2 && tzid.front() == '"' ? tzid.substr(1, tzid.size() - 2) : tzid;
    for (const auto& definition : definitionsNamed(unquoted)) {
        if (!definition->location.empty()) {
            if (auto zone = systemZone(definition->location)) return zone;
        }
        auto made = cache_.find(definition);
        if (made == cache_.end()) made = cache_.emplace(definition, definition->timeZone()).first;
        if (made->second) return made->second;
    }
    return std::nullopt;
}

}  // namespace platform
