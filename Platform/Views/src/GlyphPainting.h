#pragma once

#include <cairo.h>
#include <pango/pango.h>

namespace platform {

enum class GlyphPlacing {
    /// Each glyph on a whole device pixel: fast, and hard to see where pixels are small.
    wholePixels,
    /// Each glyph exactly where it was shaped.
    exact,
};

/// Paints the line in the source colour, its baseline starting at the origin.
void paintLine(cairo_t* cairo, PangoLayoutLine* line, GlyphPlacing placing);

}  // namespace platform
