#pragma once

#include "AlertCenter.h"

#include <HbrCore/CoreServices.h>

#include <string>

namespace hbr {

/// Does what another process asks for with the action "snooze": `how` is a number of minutes,
/// desktopApplication::untilStart or desktopApplication::clear. An unknown event goes to the diagnostics.
void handleSnoozeRequest(CoreServices& core, AlertCenter& alerts, const std::string& eventId,
                         const std::string& how);

}  // namespace hbr
