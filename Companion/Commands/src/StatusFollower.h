#pragma once

#include "StatusFormats.h"

#include <Session/CommandContext.h>

#include <optional>

namespace hbr {

/// Prints the line whenever it changed, from the minute timer of a long-lived core and the changes of
/// calendars, settings and reminders, until the program is told to end or nobody reads any more.
void followStatus(CommandContext& context, const StatusOptions& options, std::optional<double> within);

}  // namespace hbr
