#pragma once

#include "PictureState.h"

#include <Values/ImageBytes.h>

#include <memory>

namespace platform {

/// Premultiplied ARGB of the photo, filling so many pixels without being distorted; nullptr when it cannot be
/// decoded, costs too much (ImageBytes::isCostly) or takes longer than two seconds. Any thread.
std::shared_ptr<const Raster> decodedPixels(const ImageBytes& image, int width, int height);

}  // namespace platform
