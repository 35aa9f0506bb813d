#pragma once

#include <Session/CommandContext.h>

namespace hbr {

/// Makes the session start the desktop program: at login and, for links, through the session bus. Writes into
/// the user's own folders; files there that we did not write are not changed.
void installDesktopIntegration(CommandContext& context, bool isDryRun);
/// Removes what was written; false when nothing was.
bool removeDesktopIntegration(CommandContext& context, bool isDryRun);

}  // namespace hbr
