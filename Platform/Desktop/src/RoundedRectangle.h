#pragma once

#include <Views/Geometry.h>
#include <cairo.h>

namespace platform {

/// Adds it to the path; the radius is cut to half of the shorter side.
void addRoundedRectangle(cairo_t* cairo, Rect rect, double radius);

}  // namespace platform
