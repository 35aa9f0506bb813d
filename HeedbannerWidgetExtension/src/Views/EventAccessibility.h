#pragma once

#include <Foundation/Date.h>
#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>

#include <string>

namespace hbr {

/// What is said of an event's pill: the event in sentences, then where it belongs.
std::string accessibilityLabel(const Event& event, const EventViewInputs& inputs, platform::Date now);
/// What is said of what remains of an event under way, as one more sentence with a blank before it; else
/// empty.
std::string remainingSentence(const Event& event, const EventViewInputs& inputs, platform::Date now);

}  // namespace hbr
