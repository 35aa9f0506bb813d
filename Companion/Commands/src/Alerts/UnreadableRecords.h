#pragma once

#include <System/DefaultsDomain.h>
#include <System/Diagnostics.h>

#include <vector>

namespace hbr {

/// Whether the stored own reminders can be read. If not, they are ignored, and the next change would replace
/// them.
bool hasReadableReminders(const platform::DefaultsDomain& shared);

/// One diagnostic for the own reminders, the hidden occurrences and each event's settings that cannot be
/// read.
std::vector<platform::Diagnostic> unreadableRecords(const platform::DefaultsDomain& shared);

}  // namespace hbr
