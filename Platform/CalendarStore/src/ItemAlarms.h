#pragma once

#include "ItemDetails.h"
#include "ItemLines.h"

namespace platform {

/// The alarm of one VALARM; nothing with ACTION:NONE or without a valid TRIGGER.
std::optional<ItemDetails::Alarm> alarmOf(const std::vector<ContentLine>& lines, const TimeZone& zone);

}  // namespace platform
