#pragma once

#include <Session/CommandContext.h>

namespace hbr {

/// Has the session start the program of the desktop: at the user's login and, for links, by the session bus.
/// Written into the user's own folders; a file there that is not ours stays as it is.
void installDesktopIntegration(CommandContext& context, bool isDryRun);
/// Removes what was written; false when nothing was.
bool removeDesktopIntegration(CommandContext& context, bool isDryRun);

}  // namespace hbr
