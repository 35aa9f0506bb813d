#pragma once

#include <Session/CommandContext.h>

#include <vector>

namespace hbr {

/// The open tasks of the watched lists that are due in the interval. Runs the main queue until they arrive.
std::vector<platform::EKReminderRef> watchedTasks(CommandContext& context, platform::Date from,
                                                  platform::Date to);

}  // namespace hbr
