#pragma once

#include <Views/LaidOutTree.h>
#include <Views/Painters.h>
#include <cairo.h>

#include <vector>

#include "WidgetShadow.h"

namespace platform {

/// A laid-out tree and its picture, painted once and then only where a later tree differs.
class PaintedTree {
  public:
    /// `scale`: device pixels per point. Gives the rectangles that changed, in points; one with everything
    /// when the tree is another one.
    std::vector<Rect> set(LaidOutTree tree, double scale);

    /// The next tree is painted wholly, for instance with another font.
    void forget() { scale_ = 0; }

    const LaidOutTree& tree() const { return tree_; }
    bool isEmpty() const { return image_.pixels.empty(); }
    /// With the tree's origin at that of the context, one unit of which is `deviceScale` device pixels.
    void draw(cairo_t* cairo, double deviceScale) const;

  private:
    LaidOutTree tree_;
    double scale_ = 0;
    PixelImage image_;
    /// Shares the memory of `image_`.
    Surface surface_;
};

}  // namespace platform
