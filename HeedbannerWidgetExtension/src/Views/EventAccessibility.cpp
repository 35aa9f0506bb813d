#include "EventAccessibility.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>
#include <HbrUtils/DistanceTexts.h>

namespace hbr {

std::string accessibilityLabel(const Event& event, const EventViewInputs& inputs,
                               const platform::ClockReading& clock) {
    std::string label;
    if (isAnyReminder(event)) {
        // Its time is not a whole sentence; the full stop is added here.
        Event withoutCall = event;
        withoutCall.videoConferenceLinks.clear();
        label = accessibilityValue(withoutCall, inputs.formatters, clock) + ".";
        if (!event.videoConferenceLinks.empty())
            label += " " + L10n::Accessibility::EventSummary::hasVideoCall(inputs.formatters.environment());
    } else {
        label = accessibilityValue(event, inputs.formatters, clock);
    }
    if (const auto help = accessibilityHelp(event, inputs.formatters)) label += " " + *help;
    return label;
}

std::string remainingSentence(const Event& event, const EventViewInputs& inputs,
                              const platform::ClockReading& clock) {
    if (!isCurrentEvent(event, clock)) return {};
    const auto remaining = timeRemainingText(event.endDate, clock, inputs.formatters);
    return remaining ? " " + *remaining + "." : "";
}

}  // namespace hbr
