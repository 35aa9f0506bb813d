#pragma once

#include <HbrCore/Events/Event.h>
#include <Values/Color.h>
#include <Views/Palette.h>

namespace hbr {

/// The colours of one event's pill, each legible on its background.
struct EventPillColors {
    EventPillColors(const Event& event, const platform::Palette& palette);

    /// The event's colour, translucent, as the user chose it.
    platform::Color fill;
    /// The fill over the container, opaque.
    platform::Color ground;
    /// True when fill and container can hardly be distinguished, so that the pill needs an edge.
    bool needsEdge = false;
    platform::Color edge;
    platform::Color primary;
    platform::Color secondary;
    /// Circle of a task and ring of the progress.
    platform::Color ring;
    /// Bar and alarm.
    platform::Color marker;
};

}  // namespace hbr
