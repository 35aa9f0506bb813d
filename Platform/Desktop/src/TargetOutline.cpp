#include "TargetOutline.h"

#include <optional>

namespace platform {

namespace {

/// Around targets that nothing fills.
constexpr double plainDistance = 4, plainRadius = 6;
/// From the widget's edge to its content.
constexpr double contentInset = 16;

std::optional<double> radiusOfFill(const LaidOutNode& node, const Rect& frame) {
    if (node.kind == LaidOutNode::Kind::shape && !node.isHairline && node.frame == frame)
        return node.cornerRadius;
    for (const auto& child : node.children) {
        if (child.kind == LaidOutNode::Kind::link) continue;
        if (const auto radius = radiusOfFill(child, frame)) return radius;
    }
    return std::nullopt;
}

TargetOutline outlineOf(const LaidOutNode& target, Size widget) {
    if (const auto radius = radiusOfFill(target, target.frame)) return {target.frame, *radius};
    const bool isContent = target.frame.width >= widget.width - 2 * contentInset &&
                           target.frame.height >= widget.height - 2 * contentInset;
    if (isContent) return {{0, 0, widget.width, widget.height}, 0, true};
    return {widened(target.frame, plainDistance), plainRadius};
}

void collect(const LaidOutNode& node, Size widget, std::vector<TargetOutline>& outlines) {
    if (node.url) outlines.push_back(outlineOf(node, widget));
    for (const auto& child : node.children)
        collect(child, widget, outlines);
}

}  // namespace

Rect widened(Rect rect, double by) {
    return {rect.x - by, rect.y - by, rect.width + 2 * by, rect.height + 2 * by};
}

std::vector<TargetOutline> targetOutlines(const LaidOutTree& tree) {
    std::vector<TargetOutline> outlines;
    collect(tree.root, tree.size, outlines);
    return outlines;
}

}  // namespace platform
