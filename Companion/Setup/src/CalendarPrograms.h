#pragma once

#include <Setup/LocationCandidate.h>
#include <System/Environment.h>

namespace hbr {

/// Storages on disk, calendars and address books from this user's configurations of vdirsyncer, khal and
/// khard. Relative paths there start at the home folder.
FoundCandidates placesOfCalendarPrograms(const platform::Environment& environment);

}  // namespace hbr
