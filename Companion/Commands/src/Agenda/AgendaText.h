#pragma once

#include "Agenda/AgendaEvents.h"

#include <string>
#include <vector>

namespace hbr {

/// "Today, Wed, Mar 4".
std::string dayHeading(platform::Date day, platform::Date now, const Formatters& formatters);
/// "9:00 AM – 10:00 AM", with " +1" after an end on the next day; one time for a reminder.
std::string timeSpan(const Event& event, const Formatters& formatters);

/// The agenda for a terminal or a pipe: what is under way, then each day with its events and their join
/// links. With `withIds` every event has its id.
std::string agendaText(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds);

}  // namespace hbr
