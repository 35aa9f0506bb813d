#pragma once

#include <cstdint>

namespace platform {

/// The costly steps of drawing that this process has taken so far, in all its threads: what a drawing took is
/// the difference of two readings. A drawing that repeats takes none.
struct DrawingWork {
    /// Texts given to the shaper.
    std::uint64_t shapedTexts = 0;
    /// Symbols, pictures and photos made into pixels.
    std::uint64_t rasterizedPictures = 0;

    static DrawingWork soFar();

    DrawingWork operator-(const DrawingWork& earlier) const {
        return {shapedTexts - earlier.shapedTexts, rasterizedPictures - earlier.rasterizedPictures};
    }
    friend bool operator==(const DrawingWork&, const DrawingWork&) = default;
};

}  // namespace platform
