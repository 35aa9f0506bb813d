#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <string>
#include <vector>

namespace hbr {

/// What the help says about the argument EVENT.
inline constexpr const char* eventArgumentMeaning =
    "An id or its beginning, now, next, or a part of the title";

/// The event meant by an id, an unambiguous beginning of one, "now", "next" or a part of its title: among
/// what the widgets show, else among everything of last week and the next two months in the watched
/// calendars, the watched tasks and the own reminders. Throws (nothing there to act on) when there is none,
/// or several, which the message then lists.
Event chosenEvent(CommandContext& context, const std::string& wanted);

/// A line for each: when, title, calendar, id.
std::string eventList(CommandContext& context, const std::vector<Event>& events);

}  // namespace hbr
