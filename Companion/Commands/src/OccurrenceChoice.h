#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/HiddenOccurrences.h>
#include <string>

namespace hbr {

/// The occurrence of the event's series that `when` names: a moment, which is its start or the one that the
/// series gives it, or a day on which only one begins. With `isHidden` only those that the user left out,
/// also where the calendar no longer has them. Throws CommandFailure.
Occurrence chosenOccurrence(CommandContext& context, const Event& series, const std::string& when,
                            bool isHidden);

}  // namespace hbr
