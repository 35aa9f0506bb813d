#pragma once

#include <Values/ImageBytes.h>

#include <functional>
#include <memory>

namespace platform {

/// Whether a `photo` of so many device pixels is painted at once: it was decoded before, or cannot be. Any
/// thread.
bool isPhotoDecoded(const ImageBytes& image, int width, int height);

/// Decodes the photo for so many device pixels on a thread of its own, where one photo follows the other.
/// `done` comes on the main queue, unless the token was dropped by then. Main thread.
[[nodiscard]] std::shared_ptr<void> decodePhoto(const ImageBytes& image, int width, int height,
                                                std::function<void()> done);

}  // namespace platform
