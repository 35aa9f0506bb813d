#pragma once

#include <Views/Geometry.h>

#include <cairo.h>

namespace platform {

/// A rectangle whose corners are quarters of a circle, and the device pixels per point that its edges lie on;
/// 0 where there are none (vector output).
struct RoundedShape {
    Rect rect;
    double radius = 0;
    double scale = 0;
};

/// In the source colour. Edges on whole pixels need no smoothing, which costs more than the rest of a
/// drawing: only the corners are painted as curves.
void fillRounded(cairo_t* cairo, const RoundedShape& shape);
/// A line of that width inside the edge.
void strokeRounded(cairo_t* cairo, const RoundedShape& shape, double lineWidth);
/// As a path.
void addRounded(cairo_t* cairo, const Rect& rect, double radius);

}  // namespace platform
