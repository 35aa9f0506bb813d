#pragma once

#include "ZoneDefinition.h"

#include <TimeAndText/TimeZone.h>

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

/// Zones made from files' own definitions, which the files share.
using ZoneDefinitionCache = std::unordered_map<ZoneDefinitionRef, std::optional<TimeZone>>;

/// Finds the zone that a TZID of one file means: the system's zones first (also under Windows names and
/// behind a vendor's prefix), because their offsets are kept up to date; then the file's own definition.
class ZoneLookup {
  public:
    ZoneLookup(std::filesystem::path zoneInfoDirectory, const std::vector<ZoneDefinitionRef>& definitions,
               ZoneDefinitionCache& cache)
        : directory_(std::move(zoneInfoDirectory)), definitions_(definitions), cache_(cache) {}

    /// Nothing for a zone that nobody knows, or whose name is longer than any zone's.
    std::optional<TimeZone> find(const std::string& tzid);

  private:
    std::optional<TimeZone> search(std::string_view tzid) const;
    std::optional<TimeZone> systemZone(std::string_view tzid) const;
    const std::vector<ZoneDefinitionRef>& definitionsNamed(std::string_view tzid) const;

    std::filesystem::path directory_;
    const std::vector<ZoneDefinitionRef>& definitions_;
    ZoneDefinitionCache& cache_;
    /// By TZID in lower case, made when it is first needed.
    mutable std::unordered_map<std::string, std::vector<ZoneDefinitionRef>> byName_;
    std::map<std::string, std::optional<TimeZone>, std::less<>> found_;
};

}  // namespace platform
