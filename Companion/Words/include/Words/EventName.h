#pragma once

#include <HbrUtils/Formatters.h>
#include <TimeAndText/ClockReading.h>

#include <HbrCore/Events/Event.h>
#include <optional>
#include <string>

namespace hbr {

/// The title on one line, "(no title)" without one.
std::string titleText(const std::optional<std::string>& title, const platform::Environment& environment);
std::string titleOf(const Event& event, const platform::Environment& environment);
/// The title in quotation marks, as messages name an event.
std::string quotedTitle(const Event& event, const platform::Environment& environment);
/// When an event is, on one line. Dates are left out for today; an event under way shows only its end.
std::string timesText(const Event& event, const Formatters& formatters, const platform::ClockReading& clock);

}  // namespace hbr
