#pragma once

#include <Session/CommandContext.h>
#include <Setup/SetupPlan.h>

namespace hbr {

/// Adds what the plan has, all at once, watches all of it (of accounts that were there, what is new in them),
/// tells it on standard output, and remembers it so that it can be taken back. With `dryRun` it only tells.
void carryOut(CommandContext& context, const SetupPlan& plan, bool dryRun);

/// Takes the last setup back. Throws when there is none.
ExitCode undoSetup(CommandContext& context, bool dryRun);

}  // namespace hbr
