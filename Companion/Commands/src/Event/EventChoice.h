#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <string>
#include <vector>

namespace hbr {

/// The help text of the argument EVENT.
inline constexpr const char* eventArgumentMeaning =
    "An id or its beginning, now, next, or a part of the title";

/// The event with this id, unambiguous beginning of an id, "now", "next" or part of a title. Searches what
/// the widgets show, then everything of last week and the next two months in the watched calendars, the
/// watched tasks and the own reminders. Throws CommandFailure (nothingThere) when there is none or when there
/// are several, which the message lists.
Event chosenEvent(CommandContext& context, const std::string& wanted);

/// A line for each: when, title, calendar, id.
std::string eventList(CommandContext& context, const std::vector<Event>& events);

}  // namespace hbr
