#include "GlyphPainting.h"

#include <hb-ot.h>
#include <pango/pangocairo.h>

namespace platform {

namespace {

/// Emoji have no outlines worth filling.
bool hasColors(PangoFont* font) {
    hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font));
    return hb_ot_color_has_png(face) || hb_ot_color_has_layers(face) || hb_ot_color_has_svg(face);
}

}  // namespace

void paintLine(cairo_t* cairo, PangoLayoutLine* line, GlyphPlacing placing) {
    cairo_move_to(cairo, 0, 0);
    if (placing == GlyphPlacing::wholePixels) {
        pango_cairo_show_layout_line(cairo, line);
        return;
    }
    int x = 0;
    for (const GSList* item = line->runs; item; item = item->next) {
        const auto* run = static_cast<const PangoLayoutRun*>(item->data);
        PangoFont* font = run->item->analysis.font;
        x += run->start_x_offset;
        cairo_move_to(cairo, pango_units_to_double(x), -pango_units_to_double(run->y_offset));
        if (hasColors(font)) {
            pango_cairo_show_glyph_string(cairo, font, run->glyphs);
        } else {
            // Cairo rounds the places of glyphs to pixels, but not those of paths.
            pango_cairo_glyph_string_path(cairo, font, run->glyphs);
            cairo_fill(cairo);
        }
        x += pango_glyph_string_get_width(run->glyphs) + run->end_x_offset;
    }
    cairo_new_path(cairo);
}

}  // namespace platform
