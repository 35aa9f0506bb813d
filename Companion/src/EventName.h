#pragma once

#include <Foundation/ClockReading.h>
#include <HbrCore/Events/Event.h>
#include <HbrUtils/Formatters.h>

#include <string>

namespace hbr {

/// The title on one line, "(no title)" without one.
std::string titleOf(const Event& event, const platform::Environment& environment);
/// In the words of Environment::current().
std::string titleOf(const Event& event);
/// The title in quotation marks, as messages name an event.
std::string quotedTitle(const Event& event);
/// When an event is, on one line: dates only where they are not today's; of one under way the end.
std::string timesText(const Event& event, const Formatters& formatters, const platform::ClockReading& clock);

}  // namespace hbr
