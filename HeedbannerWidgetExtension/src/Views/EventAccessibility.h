#pragma once

#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>
#include <TimeAndText/ClockReading.h>

#include <string>

namespace hbr {

/// What is said of an event's pill: the event in sentences, then where it belongs.
std::string accessibilityLabel(const Event& event, const EventViewInputs& inputs,
                               const platform::ClockReading& clock);
/// What is said of what remains of an event under way, as one more sentence with a blank before it; else
/// empty.
std::string remainingSentence(const Event& event, const EventViewInputs& inputs,
                              const platform::ClockReading& clock);

}  // namespace hbr
