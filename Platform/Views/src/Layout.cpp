#include <Views/LaidOutTree.h>

#include "StackPlan.h"

namespace platform {

namespace {

void mirror(LaidOutNode& node, double width) {
    node.frame.x = width - node.frame.right();
    for (auto& child : node.children)
        mirror(child, width);
}

constexpr double containerRadius = 20;
constexpr double contentInset = 16;

}  // namespace

LaidOutTree layOut(const View& view, Size size, const ViewContext& context) {
    LaidOutTree tree;
    tree.size = size;
    tree.family = context.family;
    tree.isRightToLeft = context.isRightToLeft;
    tree.pictures = context.pictures;
    if (context.changes) tree.changesAt = context.changes->earliest();
    tree.root.frame = {0, 0, size.width, size.height};
    if (view.isEmpty()) return tree;

    Inherited inherited;
    inherited.color = context.palette().primary;
    inherited.context = &context;
    StackPlanCache plans;
    inherited.plans = &plans;
    const Size taken = view.node()->measure(Proposal::of(size), inherited).size;
    view.node()->place(
        {(size.width - taken.width) / 2, (size.height - taken.height) / 2, taken.width, taken.height},
        inherited, tree.root.children);
    if (tree.isRightToLeft) mirror(tree.root, size.width);
    return tree;
}

LaidOutTree layOutWidget(const View& content, const ViewContext& context) {
    const auto& palette = context.palette();
    const View ground = rectangle(containerRadius).foreground(palette.container);
    const View border =
        shape({.cornerRadius = containerRadius, .isHairline = true}).foreground(palette.border);
    const View inner = content.filling().padding(Insets::all(contentInset));
    return layOut(zstack({}, {ground, border, inner}), sizeOf(context.family), context);
}

}  // namespace platform
