#pragma once

#include <HbrCore/Events/Event.h>

#include <optional>

namespace hbr {

class CoreServices;

/// The event whose call one means by "join" alone, of those with a conference link: the first pending one,
/// else the one under way that began last, else the next inside its lead (an own reminder, or an event with
/// a lead over an hour), which is in no list that is shown but inside the days that are looked at, and not
/// excluded. From the manager's lists as they are. Main thread.
std::optional<Event> callToJoin(const CoreServices& core);
/// The next of the listed events to come with a conference link.
std::optional<Event> nextCall(const CoreServices& core);

}  // namespace hbr
