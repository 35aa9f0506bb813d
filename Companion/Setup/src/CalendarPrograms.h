#pragma once

#include <Setup/LocationCandidate.h>
#include <System/Environment.h>

namespace hbr {

/// What the configurations of vdirsyncer, khal and khard of this user name: storages on disk, calendars,
/// address books. Relative paths in them count from the home folder.
FoundCandidates placesOfCalendarPrograms(const platform::Environment& environment);

}  // namespace hbr
