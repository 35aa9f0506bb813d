#include "PaintedTree.h"

#include <algorithm>
#include <utility>

namespace platform {

namespace {

/// Glyphs may reach beyond their line box.
constexpr double overhang = 4;

Rect widened(Rect rect, Size limit) {
    const double left = std::max(0.0, rect.x - overhang), top = std::max(0.0, rect.y - overhang);
    return {left, top, std::min(limit.width, rect.right() + overhang) - left,
            std::min(limit.height, rect.bottom() + overhang) - top};
}

bool looksTheSame(const LaidOutNode& a, const LaidOutNode& b) {
    return a.frame == b.frame && a.text == b.text && a.color == b.color && a.accent == b.accent &&
           a.font == b.font && a.textScale == b.textScale && a.textAlignment == b.textAlignment &&
           a.lineLimit == b.lineLimit && a.startsWithInk == b.startsWithInk && a.opacity == b.opacity &&
           a.cornerRadius == b.cornerRadius && a.isHairline == b.isHairline && a.fraction == b.fraction &&
           a.image == b.image;
}

/// False when the trees are built differently.
bool collectChanges(const LaidOutNode& before, const LaidOutNode& after, Size size,
                    std::vector<Rect>& changes) {
    if (before.kind != after.kind || before.children.size() != after.children.size()) return false;
    if (!looksTheSame(before, after)) {
        changes.push_back(widened(before.frame, size));
        if (after.frame != before.frame) changes.push_back(widened(after.frame, size));
    }
    for (std::size_t i = 0; i < before.children.size(); ++i) {
        if (!collectChanges(before.children[i], after.children[i], size, changes)) return false;
    }
    return true;
}

}  // namespace

std::vector<Rect> PaintedTree::set(LaidOutTree tree, double scale) {
    std::vector<Rect> changes;
    const bool isComparable = !isEmpty() && scale == scale_ && tree.size == tree_.size &&
                              tree.isRightToLeft == tree_.isRightToLeft && tree.pictures == tree_.pictures &&
                              collectChanges(tree_.root, tree.root, tree.size, changes);
    tree_ = std::move(tree);
    if (isComparable) {
        for (const Rect& change : changes)
            repaintPixels(image_, tree_, scale, change);
        if (!changes.empty()) cairo_surface_mark_dirty(surface_.get());
        return changes;
    }
    surface_.reset();
    scale_ = scale;
    image_ = paintPixels(tree_, scale);
    surface_.reset(cairo_image_surface_create_for_data(image_.pixels.data(), CAIRO_FORMAT_ARGB32,
                                                       image_.width, image_.height, image_.stride));
    return {{0, 0, tree_.size.width, tree_.size.height}};
}

void PaintedTree::draw(cairo_t* cairo, double deviceScale) const {
    if (isEmpty()) return;
    cairo_save(cairo);
    cairo_scale(cairo, 1 / deviceScale, 1 / deviceScale);
    cairo_set_source_surface(cairo, surface_.get(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_NEAREST);
    cairo_paint(cairo);
    cairo_restore(cairo);
}

}  // namespace platform
