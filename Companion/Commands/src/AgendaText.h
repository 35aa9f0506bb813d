#pragma once

#include "AgendaEvents.h"

#include <string>
#include <vector>

namespace hbr {

/// "Today, Wed, Mar 4".
std::string dayHeading(platform::Date day, platform::Date now, const Formatters& formatters);
/// "9:00 AM – 10:00 AM", " +1" behind an end on the next day; of a reminder its moment.
std::string timeSpan(const Event& event, const Formatters& formatters);

/// The agenda for a terminal or a pipe: what is under way, then each day with its events, each with its
/// join link. With `withIds` every event carries its id.
std::string agendaText(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds);

}  // namespace hbr
