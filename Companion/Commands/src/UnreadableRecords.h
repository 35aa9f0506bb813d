#pragma once

#include <System/DefaultsDomain.h>
#include <System/Diagnostics.h>

#include <vector>

namespace hbr {

/// Whether the stored own reminders can be read; otherwise they are ignored, and the next change of them
/// would replace them.
bool hasReadableReminders(const platform::DefaultsDomain& shared);

/// One diagnostic for each stored own reminder list and each stored setting of an event that cannot be read.
std::vector<platform::Diagnostic> unreadableRecords(const platform::DefaultsDomain& shared);

}  // namespace hbr
