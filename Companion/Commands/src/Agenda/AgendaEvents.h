#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/EventRef.h>
#include <HbrCore/Explanation/EventExplanation.h>
#include <HbrCore/Scheduling/EventLists.h>
#include <optional>
#include <vector>

namespace hbr {

using AgendaState = ListedState;

struct AgendaEvent {
    AgendaState state = AgendaState::upcoming;
    EventRef event;
};

/// Current events first, then by start.
std::vector<AgendaEvent> agendaOf(const EventLists& lists);

/// What a reload lists, current events first, then by start. `days` overrides the days of the settings.
std::vector<AgendaEvent> agendaEvents(CommandContext& context, std::optional<int> days);

}  // namespace hbr
