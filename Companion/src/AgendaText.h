#pragma once

#include "AgendaEvents.h"

#include <string>
#include <vector>

namespace hbr {

/// The agenda for a terminal or a pipe: what is under way, then each day with its events, each with its
/// join link. With `withIds` every event carries its id.
std::string agendaText(CommandContext& context, const std::vector<AgendaEvent>& agenda, bool withIds);

}  // namespace hbr
