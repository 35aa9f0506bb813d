#pragma once

#include <vector>

namespace platform {

/// Logical pixels from the two edges of a corner to the nearest edges of a widget.
struct CornerOffset {
    int horizontal = 0;
    int vertical = 0;

    friend bool operator==(const CornerOffset&, const CornerOffset&) = default;
};

struct StackedSize {
    int width = 0;
    int height = 0;
};

struct CornerWidget {
    bool isLeft = false;
    bool isTop = false;
    StackedSize size;
};

/// Distance from the edges of the area, and between widgets.
constexpr int edgeDistance = 20;
constexpr int widgetDistance = 12;

/// Places the widgets of one area, each in a column from its corner on. Where the area ends, or where a
/// widget of another corner stands that came before, a new column begins beside it. A widget for which the
/// area has no more room is placed as if its corner were empty.
std::vector<CornerOffset> stackInCorners(const std::vector<CornerWidget>& widgets, StackedSize area);

}  // namespace platform
