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

/// Distance from the edges of the area, and between widgets.
constexpr int edgeDistance = 20;
constexpr int widgetDistance = 12;

/// Places widgets in a column from a corner on; where the area ends, a new column begins beside it.
std::vector<CornerOffset> stackFromCorner(const std::vector<StackedSize>& widgets, int areaHeight);

}  // namespace platform
