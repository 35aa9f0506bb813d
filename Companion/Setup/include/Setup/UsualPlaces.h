#pragma once

#include <Setup/LocationCandidate.h>
#include <System/Environment.h>

namespace hbr {

/// The usual places of calendars and contacts that exist: those in other programs' configurations,
/// ~/.calendars, ~/.contacts, the same in the data directory, and calendar files in the home folder. Files in
/// Documents and Downloads need consent.
FoundCandidates usualPlaces(const platform::Environment& environment);

/// The folders that `usualPlaces` looks at without a configuration.
std::vector<std::filesystem::path> usualFolders(const platform::Environment& environment);

}  // namespace hbr
