#include "EventAccessibility.h"

#include <HbrCore/Events/EventTexts.h>

namespace hbr {

std::string accessibilityLabel(const Event& event, const EventViewInputs& inputs, platform::Date now) {
    std::string label = accessibilityValue(event, inputs.formatters, now);
    if (const auto help = accessibilityHelp(event)) label += " " + *help;
    return label;
}

}  // namespace hbr
