#pragma once

#include "Status/StatusFormats.h"

#include <Session/CommandContext.h>

#include <optional>

namespace hbr {

/// Prints the line whenever it changes: at the core's whole minutes and when calendars, settings or reminders
/// change. Ends when the program is asked to end or the reader of its output is gone.
void followStatus(CommandContext& context, const StatusOptions& options, std::optional<double> within);

}  // namespace hbr
