#pragma once

#include "PictureState.h"

#include <cairo.h>
#include <pango/pango.h>

#include <optional>

namespace platform {

/// Coverage of one line of text, every glyph exactly where it was shaped; the pixel (x, y) from the line's
/// origin on is the raster's first.
struct LineMask {
    int x = 0;
    int y = 0;
    Raster raster;
};

/// `scale`: pixels per unit; `phase`: how far right of a whole pixel the line's origin lies. Nothing when the
/// line has no ink, and for emoji, which have colours of their own instead of a coverage.
std::optional<LineMask> lineMask(PangoLayoutLine* line, double scale, double phase);

/// Paints the line in the source colour, its origin at (0, 0).
void paintGlyphs(cairo_t* cairo, PangoLayoutLine* line, bool isVector);

}  // namespace platform
