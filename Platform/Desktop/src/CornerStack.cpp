#include "CornerStack.h"

#include <algorithm>

namespace platform {

std::vector<CornerOffset> stackFromCorner(const std::vector<StackedSize>& widgets, int areaHeight) {
    std::vector<CornerOffset> offsets;
    offsets.reserve(widgets.size());
    CornerOffset next{edgeDistance, edgeDistance};
    int columnWidth = 0;
    for (const StackedSize& widget : widgets) {
        const bool isFirstOfColumn = next.vertical == edgeDistance;
        if (!isFirstOfColumn && next.vertical + widget.height + edgeDistance > areaHeight) {
            next = {next.horizontal + columnWidth + widgetDistance, edgeDistance};
            columnWidth = 0;
        }
        offsets.push_back(next);
        next.vertical += widget.height + widgetDistance;
        columnWidth = std::max(columnWidth, widget.width);
    }
    return offsets;
}

}  // namespace platform
