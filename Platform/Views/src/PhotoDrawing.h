#pragma once

#include "PictureState.h"

#include <Values/ImageBytes.h>

#include <memory>

#include <cairo.h>

namespace platform {

/// Premultiplied ARGB of the photo, filling so many pixels; nullptr when it cannot be decoded. The last ones
/// are kept. Any thread.
std::shared_ptr<const Raster> photoRaster(const ImageBytes& image, int width, int height);

/// Into the rectangle (0, 0, width, height).
void drawPhoto(cairo_t* cairo, const ImageBytes& image, double width, double height, double opacity);

}  // namespace platform
