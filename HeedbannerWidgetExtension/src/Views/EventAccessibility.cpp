#include "EventAccessibility.h"

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <HbrLocalization/L10n.h>

namespace hbr {

std::string accessibilityLabel(const Event& event, const EventViewInputs& inputs, platform::Date now) {
    std::string label;
    if (isAnyReminder(event)) {
        // Its time is no sentence by itself and ends as one here.
        Event withoutCall = event;
        withoutCall.videoConferenceLinks.clear();
        label = accessibilityValue(withoutCall, inputs.formatters, now) + ".";
        if (!event.videoConferenceLinks.empty())
            label += " " + L10n::Accessibility::EventSummary::hasVideoCall();
    } else {
        label = accessibilityValue(event, inputs.formatters, now);
    }
    if (const auto help = accessibilityHelp(event)) label += " " + *help;
    return label;
}

std::string remainingSentence(const Event& event, const EventViewInputs& inputs, platform::Date now) {
    if (!isCurrentEvent(event, now)) return {};
    const auto remaining = inputs.formatters.timeRemaining(timeLeft(event, now));
    return remaining ? " " + *remaining + "." : "";
}

}  // namespace hbr
