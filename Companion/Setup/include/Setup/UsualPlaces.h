#pragma once

#include <Setup/LocationCandidate.h>
#include <System/Environment.h>

namespace hbr {

/// Where calendars and contacts of this user usually lie, as far as there is something: what other programs'
/// configurations name, ~/.calendars, ~/.contacts and their like in the data directory, calendar files in
/// the home folder; those in Documents and Downloads need consent.
FoundCandidates usualPlaces(const platform::Environment& environment);

/// The folders that `usualPlaces` looks at by itself.
std::vector<std::filesystem::path> usualFolders(const platform::Environment& environment);

}  // namespace hbr
