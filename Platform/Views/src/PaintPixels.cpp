#include <Views/Painters.h>

#include "TreePainter.h"

#include <cmath>
#include <stdexcept>

namespace platform {

namespace {

/// Draws on the image; throws when Cairo could not.
template <class Draw>
void drawOn(PixelImage& image, double scale, const Draw& draw) {
    cairo_surface_t* surface = cairo_image_surface_create_for_data(image.pixels.data(), CAIRO_FORMAT_ARGB32,
                                                                   image.width, image.height, image.stride);
    cairo_surface_set_device_scale(surface, scale, scale);
    cairo_t* cairo = cairo_create(surface);
    draw(cairo);
    const cairo_status_t status = cairo_status(cairo);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

}  // namespace

PixelImage paintPixels(const LaidOutTree& tree, double scale) {
    PixelImage image;
    image.width = static_cast<int>(std::lround(tree.size.width * scale));
    image.height = static_cast<int>(std::lround(tree.size.height * scale));
    image.stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, image.width);
    image.pixels.resize(static_cast<std::size_t>(image.stride) * static_cast<std::size_t>(image.height));
    drawOn(image, scale, [&](cairo_t* cairo) { paintTree(cairo, tree, {.scale = scale}); });
    return image;
}

void repaintPixels(PixelImage& image, const LaidOutTree& tree, double scale, Rect changed) {
    drawOn(image, scale, [&](cairo_t* cairo) {
        // Whole device pixels: a clip through a pixel would blend old and new.
        const double left = std::floor(changed.x * scale) / scale,
                     top = std::floor(changed.y * scale) / scale;
        cairo_rectangle(cairo, left, top, std::ceil(changed.right() * scale) / scale - left,
                        std::ceil(changed.bottom() * scale) / scale - top);
        cairo_clip(cairo);
        cairo_set_operator(cairo, CAIRO_OPERATOR_CLEAR);
        cairo_paint(cairo);
        cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
        paintTree(cairo, tree, {.scale = scale});
    });
}

}  // namespace platform
