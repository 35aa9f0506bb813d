#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/HiddenOccurrences.h>
#include <string>

namespace hbr {

/// The occurrence of the event's series that `when` names: by its start, by its original start in the series,
/// or by a day on which only one occurrence begins. With `isHidden` only occurrences that the user left out,
/// including those that are no longer in the calendar. Throws CommandFailure.
Occurrence chosenOccurrence(CommandContext& context, const Event& series, const std::string& when,
                            bool isHidden);

}  // namespace hbr
