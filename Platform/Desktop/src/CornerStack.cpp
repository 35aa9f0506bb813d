#include "CornerStack.h"

#include <algorithm>
#include <map>
#include <optional>
#include <utility>

namespace platform {

namespace {

/// Edges from the area's top left corner.
struct Frame {
    int left = 0, top = 0, right = 0, bottom = 0;

    bool isTooNear(const Frame& other) const {
        return left < other.right + widgetDistance && other.left < right + widgetDistance &&
               top < other.bottom + widgetDistance && other.top < bottom + widgetDistance;
    }
};

/// Where the next widget of a corner would be placed, and how wide its column is so far.
struct Column {
    CornerOffset next{edgeDistance, edgeDistance};
    int width = 0;

    bool isEmpty() const { return next.vertical == edgeDistance; }
    void beginAnother(int distance) {
        next = {distance + widgetDistance, edgeDistance};
        width = 0;
    }
    CornerOffset add(StackedSize size) {
        const CornerOffset offset = next;
        next.vertical += size.height + widgetDistance;
        width = std::max(width, size.width);
        return offset;
    }
};

class CornerStacks {
  public:
    explicit CornerStacks(StackedSize area) : area_(area) {}

    CornerOffset add(const CornerWidget& widget) {
        Column& column = columns_[{widget.isLeft, widget.isTop}];
        const Column freeOne = besideOthers(widget, column);
        column = isInside(freeOne.next.horizontal, widget) ? freeOne : wherever(widget, column);
        const CornerOffset offset = column.add(widget.size);
        frames_.push_back(frameAt(widget, offset));
        return offset;
    }

  private:
    bool isInside(int horizontal, const CornerWidget& widget) const {
        return horizontal + widget.size.width + edgeDistance <= area_.width;
    }
    bool endsColumn(const CornerWidget& widget, const Column& column) const {
        return !column.isEmpty() && column.next.vertical + widget.size.height + edgeDistance > area_.height;
    }

    Frame frameAt(const CornerWidget& widget, CornerOffset offset) const {
        const auto [width, height] = widget.size;
        const int left = widget.isLeft ? offset.horizontal : area_.width - offset.horizontal - width;
        const int top = widget.isTop ? offset.vertical : area_.height - offset.vertical - height;
        return {left, top, left + width, top + height};
    }

    Column wherever(const CornerWidget& widget, Column column) const {
        if (endsColumn(widget, column)) column.beginAnother(column.next.horizontal + column.width);
        return column;
    }

    Column besideOthers(const CornerWidget& widget, Column column) const {
        column = wherever(widget, column);
        while (isInside(column.next.horizontal, widget)) {
            const auto farEdge = farEdgeOfNeighbour(widget, column.next);
            if (!farEdge) break;
            column.beginAnother(column.isEmpty() ? *farEdge : column.next.horizontal + column.width);
        }
        return column;
    }

    /// Of one that the widget would touch there, from the widget's side of the area.
    std::optional<int> farEdgeOfNeighbour(const CornerWidget& widget, CornerOffset offset) const {
        const Frame frame = frameAt(widget, offset);
        const auto near =
            std::ranges::find_if(frames_, [&](const Frame& other) { return frame.isTooNear(other); });
        if (near == frames_.end()) return std::nullopt;
        return widget.isLeft ? near->right : area_.width - near->left;
    }

    StackedSize area_;
    std::map<std::pair<bool, bool>, Column> columns_;
    std::vector<Frame> frames_;
};

}  // namespace

std::vector<CornerOffset> stackInCorners(const std::vector<CornerWidget>& widgets, StackedSize area) {
    CornerStacks stacks(area);
    std::vector<CornerOffset> offsets;
    offsets.reserve(widgets.size());
    for (const CornerWidget& widget : widgets)
        offsets.push_back(stacks.add(widget));
    return offsets;
}

}  // namespace platform
