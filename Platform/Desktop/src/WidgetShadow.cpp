#include "WidgetShadow.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "RoundedRectangle.h"

namespace platform {

namespace {

constexpr double offset = 3;
constexpr double blur = 12;
constexpr double lightOpacity = 0.16;
constexpr double darkOpacity = 0.40;

/// A running mean over 2 × radius + 1 pixels of `count` pixels that lie `step` bytes apart.
void boxBlur(std::uint8_t* pixels, int count, std::ptrdiff_t step, int radius,
             std::vector<std::uint8_t>& line) {
    const int window = 2 * radius + 1;
    for (int i = 0; i < count; ++i)
        line[static_cast<std::size_t>(i)] = pixels[i * step];
    const auto at = [&](int i) { return i < 0 || i >= count ? 0 : line[static_cast<std::size_t>(i)]; };
    int sum = 0;
    for (int i = -radius; i < radius; ++i)
        sum += at(i);
    for (int i = 0; i < count; ++i) {
        sum += at(i + radius);
        pixels[i * step] = static_cast<std::uint8_t>((sum + window / 2) / window);
        sum -= at(i - radius);
    }
}

/// Three box blurs, which come close to a normal distribution.
void blurMask(cairo_surface_t* mask, double deviation) {
    const int width = cairo_image_surface_get_width(mask), height = cairo_image_surface_get_height(mask);
    const int stride = cairo_image_surface_get_stride(mask);
    const int radius = std::max(1, static_cast<int>(std::lround(deviation * 0.94)));
    cairo_surface_flush(mask);
    std::uint8_t* pixels = cairo_image_surface_get_data(mask);
    std::vector<std::uint8_t> line(static_cast<std::size_t>(std::max(width, height)));
    for (int pass = 0; pass < 3; ++pass) {
        for (int y = 0; y < height; ++y)
            boxBlur(pixels + y * stride, width, 1, radius, line);
        for (int x = 0; x < width; ++x)
            boxBlur(pixels + x, height, stride, radius, line);
    }
    cairo_surface_mark_dirty(mask);
}

Surface makeMask(const WidgetShadow::Shape& shape) {
    const int scale = shape.deviceScale;
    Surface mask(cairo_image_surface_create(CAIRO_FORMAT_A8, (shape.width + 2 * shadowMargin) * scale,
                                            (shape.height + 2 * shadowMargin) * scale));
    cairo_surface_set_device_scale(mask.get(), scale, scale);
    cairo_t* cairo = cairo_create(mask.get());
    addRoundedRectangle(cairo,
                        {shadowMargin, shadowMargin + offset, static_cast<double>(shape.width),
                         static_cast<double>(shape.height)},
                        shape.radius);
    cairo_fill(cairo);
    cairo_destroy(cairo);
    blurMask(mask.get(), blur / 2 * scale);
    return mask;
}

}  // namespace

void WidgetShadow::draw(cairo_t* cairo, const Shape& shape, Appearance appearance) {
    if (!mask_ || shape != shape_) {
        mask_ = makeMask(shape);
        shape_ = shape;
    }
    cairo_set_source_rgba(cairo, 0, 0, 0, appearance == Appearance::dark ? darkOpacity : lightOpacity);
    cairo_mask_surface(cairo, mask_.get(), 0, 0);
}

}  // namespace platform
