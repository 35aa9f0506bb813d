#pragma once

#include <Views/LaidOutTree.h>

#include <vector>

namespace platform {

/// What of a tap target is drawn under the pointer or with the keyboard on it.
struct TargetOutline {
    Rect frame;
    double cornerRadius = 0;
    /// All of the widget, to its edge.
    bool isWholeWidget = false;

    friend bool operator==(const TargetOutline&, const TargetOutline&) = default;
};

/// The rectangle with `by` more on each side.
Rect widened(Rect rect, double by);
/// Of each of tree.links(), in their order: rounded like the shape that fills the target; around one that
/// nothing fills; the widget itself, its corners not yet round, for one that is all of its content.
std::vector<TargetOutline> targetOutlines(const LaidOutTree& tree);

}  // namespace platform
