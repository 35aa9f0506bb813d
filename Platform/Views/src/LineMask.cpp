#include "LineMask.h"

#include <hb-ot.h>
#include <pango/pangocairo.h>

#include <algorithm>
#include <cmath>

namespace platform {

namespace {

bool hasColors(PangoFont* font) {
    hb_face_t* face = hb_font_get_face(pango_font_get_hb_font(font));
    return hb_ot_color_has_png(face) || hb_ot_color_has_layers(face) || hb_ot_color_has_svg(face);
}

bool hasColors(PangoLayoutLine* line) {
    for (const GSList* item = line->runs; item; item = item->next) {
        if (hasColors(static_cast<const PangoLayoutRun*>(item->data)->item->analysis.font)) return true;
    }
    return false;
}

}  // namespace

void paintGlyphs(cairo_t* cairo, PangoLayoutLine* line, bool isVector) {
    if (isVector) {
        cairo_move_to(cairo, 0, 0);
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
            // Cairo puts glyphs on whole pixels, which makes them dance; paths stay where they are.
            pango_cairo_glyph_string_path(cairo, font, run->glyphs);
            cairo_fill(cairo);
        }
        x += pango_glyph_string_get_width(run->glyphs) + run->end_x_offset;
    }
    cairo_new_path(cairo);
}

std::optional<LineMask> lineMask(PangoLayoutLine* line, double scale, double phase) {
    PangoRectangle ink;
    pango_layout_line_get_extents(line, &ink, nullptr);
    if (ink.width <= 0 || ink.height <= 0 || hasColors(line)) return std::nullopt;
    // A pixel on every side for the smoothed edges.
    const auto before = [](double place) { return static_cast<int>(std::floor(place)) - 1; };
    const auto behind = [](double place) { return static_cast<int>(std::ceil(place)) + 1; };
    LineMask mask;
    mask.x = before(pango_units_to_double(ink.x) * scale + phase);
    mask.y = before(pango_units_to_double(ink.y) * scale);
    mask.raster.width = behind(pango_units_to_double(ink.x + ink.width) * scale + phase) - mask.x;
    mask.raster.height = behind(pango_units_to_double(ink.y + ink.height) * scale) - mask.y;
    mask.raster.stride = cairo_format_stride_for_width(CAIRO_FORMAT_A8, mask.raster.width);
    mask.raster.pixels.resize(static_cast<std::size_t>(mask.raster.stride) *
                              static_cast<std::size_t>(mask.raster.height));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(mask.raster.pixels.data(), CAIRO_FORMAT_A8, mask.raster.width,
                                            mask.raster.height, mask.raster.stride);
    cairo_t* cairo = cairo_create(surface);
    cairo_translate(cairo, phase - mask.x, -mask.y);
    cairo_scale(cairo, scale, scale);
    paintGlyphs(cairo, line, false);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    return mask;
}

}  // namespace platform
