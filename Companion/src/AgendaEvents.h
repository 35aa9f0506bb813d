#pragma once

#include "CommandContext.h"

#include <HbrCore/Events/Event.h>
#include <HbrCore/Explanation/EventExplanation.h>

#include <optional>
#include <vector>

namespace hbr {

using AgendaState = ListedState;

struct AgendaEvent {
    AgendaState state = AgendaState::upcoming;
    Event event;
};

/// The manager's lists as they are, current events first, then by start.
std::vector<AgendaEvent> agendaOf(const CalendarEventManager& manager);

/// What the widgets would show, current events first, then by start. With `days` up to the end of the day
/// that lies so many days after today, else as far as the settings say.
std::vector<AgendaEvent> agendaEvents(CommandContext& context, std::optional<int> days);

}  // namespace hbr
