#pragma once

#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/HiddenOccurrences.h>
#include <TimeAndText/Date.h>

#include <optional>
#include <string_view>

namespace hbr {

class CoreServices;

/// Orders what an identifier or a title can mean: an event under way comes first, then those to come, then
/// those that are over, each by how near its start is.
bool isNearer(const Event& a, const Event& b, platform::Date now);

/// The event that an identifier means: of a series the nearest occurrence. Looked for in the manager's lists,
/// in the watched calendars of the last week and the next two months, among own reminders and at last in
/// every calendar and task list. Main thread.
std::optional<Event> eventWithIdentifier(const CoreServices& core, std::string_view identifier);

/// Which occurrence of its series a calendar event is; nothing if it does not recur or is gone. Main thread.
std::optional<Occurrence> occurrenceOf(const CoreServices& core, const Event& event);

/// The event, which was read earlier, with what its calendar says of it by now; of a series the same
/// occurrence, if it was not moved by half a day. Nothing when it is gone. Main thread.
std::optional<Event> asItNowStands(const CoreServices& core, const Event& event);

}  // namespace hbr
