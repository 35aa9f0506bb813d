#include <Views/Painters.h>

#include "TreePainter.h"

#include <cmath>
#include <stdexcept>

namespace platform {

PixelImage paintPixels(const LaidOutTree& tree, double scale) {
    PixelImage image;
    image.width = static_cast<int>(std::lround(tree.size.width * scale));
    image.height = static_cast<int>(std::lround(tree.size.height * scale));
    image.stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, image.width);
    image.pixels.resize(static_cast<std::size_t>(image.stride) * static_cast<std::size_t>(image.height));
    cairo_surface_t* surface = cairo_image_surface_create_for_data(image.pixels.data(), CAIRO_FORMAT_ARGB32,
                                                                   image.width, image.height, image.stride);
    cairo_surface_set_device_scale(surface, scale, scale);
    cairo_t* cairo = cairo_create(surface);
    paintTree(cairo, tree, {.scale = scale});
    const cairo_status_t status = cairo_status(cairo);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
    return image;
}

}  // namespace platform
