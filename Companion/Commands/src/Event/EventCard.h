#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <string>

namespace hbr {

/// Everything about one event for a terminal or a pipe: title, times, calendar, place, calls, notes without
/// the block that repeats the call, participants with their names from the contacts.
std::string eventCard(CommandContext& context, const Event& event);

}  // namespace hbr
