#pragma once

#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>
#include <HeedbannerWidgetExtension/WidgetEntries.h>
#include <TimeAndText/Date.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <vector>

namespace hbr {

/// As many of the first six as fit, under a header.
struct UpcomingEventsView {
    const std::vector<Event>& events;
    platform::Date now;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

/// As many of the first three as fit, then how many more there are.
struct CurrentEventsView {
    const std::vector<Event>& events;
    platform::Date now;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

struct UpcomingEventsWidgetView {
    const UpcomingEventsEntry& entry;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

/// In screenshot mode drawn as of twelve minutes into the first event.
struct CurrentEventsWidgetView {
    const CurrentEventsEntry& entry;
    const EventViewInputs& inputs;

    platform::View body(const platform::ViewContext& context) const;
};

}  // namespace hbr
