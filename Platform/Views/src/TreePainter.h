#pragma once

#include <Views/LaidOutTree.h>

#include <cairo.h>

namespace platform {

struct PaintRules {
    /// Device pixels per point; what has an edge is put on whole device pixels.
    double scale = 1;
    /// Vector output: symbols as paths, nothing snapped.
    bool isVector = false;
};

/// Paints the tree on `cairo`, one unit of which is one point.
void paintTree(cairo_t* cairo, const LaidOutTree& tree, const PaintRules& rules);

}  // namespace platform
