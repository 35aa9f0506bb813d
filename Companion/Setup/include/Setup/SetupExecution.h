#pragma once

#include <Session/CommandContext.h>
#include <Setup/SetupPlan.h>

namespace hbr {

/// Adds everything in the plan at once and watches it (in accounts that already existed, what is new in
/// them). Reports it on standard output and records it for `undoSetup`. With `dryRun` it only reports.
void carryOut(CommandContext& context, const SetupPlan& plan, bool dryRun);

/// Undoes the last setup. Throws when there is none.
ExitCode undoSetup(CommandContext& context, bool dryRun);

}  // namespace hbr
