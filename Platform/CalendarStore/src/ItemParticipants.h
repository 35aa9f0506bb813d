#pragma once

#include "ItemDetails.h"
#include "ItemLines.h"

namespace platform {

/// Sets the organizer and the attendees. `ownAddresses` are the user's, in any letter case.
void readParticipants(const std::vector<ContentLine>& lines, const std::vector<std::string>& ownAddresses,
                      ItemDetails& details);

}  // namespace platform
