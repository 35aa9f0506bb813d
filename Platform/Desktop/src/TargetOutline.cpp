#include "TargetOutline.h"

#include <optional>

namespace platform {

namespace {

/// Of targets that nothing fills.
constexpr double plainRadius = 6;

std::optional<double> radiusOfFill(const LaidOutNode& node, const Rect& frame) {
    if (node.kind == LaidOutNode::Kind::shape && !node.isHairline && node.frame == frame)
        return node.cornerRadius;
    for (const auto& child : node.children) {
        if (child.kind == LaidOutNode::Kind::link) continue;
        if (const auto radius = radiusOfFill(child, frame)) return radius;
    }
    return std::nullopt;
}

void collect(const LaidOutNode& node, std::vector<TargetOutline>& outlines) {
    if (node.url) outlines.push_back({node.frame, radiusOfFill(node, node.frame).value_or(plainRadius)});
    for (const auto& child : node.children)
        collect(child, outlines);
}

}  // namespace

std::vector<TargetOutline> targetOutlines(const LaidOutTree& tree) {
    std::vector<TargetOutline> outlines;
    collect(tree.root, outlines);
    return outlines;
}

}  // namespace platform
