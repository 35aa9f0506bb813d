#pragma once

#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>
#include <HeedbannerWidgetExtension/WidgetEntries.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

namespace hbr {

/// Headline, time until the start, the event's pill; all of it opens the event.
struct EventCountdownView {
    const Event& event;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

/// The countdown, or the message that nothing comes up.
struct NextEventCountdownWidgetView {
    const NextEventEntry& entry;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

}  // namespace hbr
