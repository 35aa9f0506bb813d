#pragma once

#include <Views/Geometry.h>

#include <optional>
#include <string>
#include <string_view>

namespace platform {

enum class Corner { topStart, topEnd, bottomStart, bottomEnd };

/// "top-start", "top-end", "bottom-start", "bottom-end".
std::string_view nameOf(Corner corner);
std::optional<Corner> cornerNamed(std::string_view name);

/// Where a widget is placed. Start and end follow the language's direction.
struct WidgetPlacement {
    Corner corner = Corner::topEnd;
    /// Name of the output; empty for the main one. While the output is away the widget is on another one
    /// and returns when it comes back.
    std::string output;
    /// Widgets of one corner form a column by this number, from the corner on; equal numbers in the order
    /// in which they were added.
    int order = 0;
    /// Where the user dragged it, if so: its top left corner in logical pixels from that of the output's work
    /// area. Such a widget is in no column. Where the area is too small for it by now, the widget is shown at
    /// the nearest place inside and returns with the room. Not every desktop can do it
    /// (DesktopCapabilities::canDrag).
    std::optional<Point> position;

    friend bool operator==(const WidgetPlacement&, const WidgetPlacement&) = default;
};

}  // namespace platform
