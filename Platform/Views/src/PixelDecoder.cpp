#include "PixelDecoder.h"

#include "WorkCounters.h"

#include <algorithm>
#include <cmath>

#include <gdk-pixbuf/gdk-pixbuf.h>

namespace platform {

namespace {

constexpr gint64 longestDecoding = 2 * G_TIME_SPAN_SECOND;
/// Between two looks at the clock.
constexpr std::size_t pieceSize = 4096;

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
using PixbufPtr = std::unique_ptr<GdkPixbuf, Unref>;

/// The longer side that is wanted; the picture is decoded so that its shorter side has it. The library
/// decodes a JPEG at an eighth of its size where that is enough.
void chooseSize(GdkPixbufLoader* loader, int width, int height, gpointer data) {
    const double wanted = *static_cast<const int*>(data);
    const double scale = wanted / std::max(1, std::min(width, height));
    if (scale >= 1) return;
    const auto scaled = [scale](int length) {
        return std::max(1, static_cast<int>(std::lround(length * scale)));
    };
    gdk_pixbuf_loader_set_size(loader, scaled(width), scaled(height));
}

PixbufPtr load(const ImageBytes& image, int wanted) {
    const std::unique_ptr<GdkPixbufLoader, Unref> loader(gdk_pixbuf_loader_new());
    g_signal_connect(loader.get(), "size-prepared", G_CALLBACK(chooseSize), &wanted);
    const auto& bytes = image.bytes();
    const gint64 deadline = g_get_monotonic_time() + longestDecoding;
    bool isGood = true;
    for (std::size_t at = 0; isGood && at < bytes.size(); at += pieceSize) {
        const auto size = std::min(pieceSize, bytes.size() - at);
        isGood = gdk_pixbuf_loader_write(loader.get(), reinterpret_cast<const guchar*>(bytes.data()) + at,
                                         size, nullptr) != FALSE &&
                 g_get_monotonic_time() < deadline;
    }
    isGood = (gdk_pixbuf_loader_close(loader.get(), nullptr) != FALSE) && isGood;
    GdkPixbuf* loaded = isGood ? gdk_pixbuf_loader_get_pixbuf(loader.get()) : nullptr;
    return PixbufPtr(loaded ? gdk_pixbuf_apply_embedded_orientation(loaded) : nullptr);
}

/// As Cairo wants them.
cairo_surface_t* surfaceOf(const GdkPixbuf* pixbuf) {
    const int width = gdk_pixbuf_get_width(pixbuf);
    const int height = gdk_pixbuf_get_height(pixbuf);
    const int channels = gdk_pixbuf_get_n_channels(pixbuf);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    if (cairo_surface_status(surface) != CAIRO_STATUS_SUCCESS) return surface;
    for (int y = 0; y < height; ++y) {
        const guchar* from = gdk_pixbuf_read_pixels(pixbuf) +
                             static_cast<std::ptrdiff_t>(y) * gdk_pixbuf_get_rowstride(pixbuf);
        auto* to = reinterpret_cast<std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                                    static_cast<std::ptrdiff_t>(y) *
                                                        cairo_image_surface_get_stride(surface));
        for (int x = 0; x < width; ++x, from += channels) {
            const std::uint32_t alpha = channels == 4 ? from[3] : 255;
            const auto premultiplied = [alpha](guchar part) { return (part * alpha + 127) / 255; };
            to[x] = alpha << 24U | premultiplied(from[0]) << 16U | premultiplied(from[1]) << 8U |
                    premultiplied(from[2]);
        }
    }
    cairo_surface_mark_dirty(surface);
    return surface;
}

}  // namespace

std::shared_ptr<const Raster> decodedPixels(const ImageBytes& image, int width, int height) {
    if (image.isCostly()) return nullptr;
    count(workCounters().rasterizedPictures);
    const PixbufPtr pixbuf = load(image, std::max(width, height));
    if (!pixbuf) return nullptr;
    auto made = std::make_shared<Raster>();
    made->width = width;
    made->height = height;
    made->stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
    made->pixels.resize(static_cast<std::size_t>(made->stride) * static_cast<std::size_t>(height));
    cairo_surface_t* target = cairo_image_surface_create_for_data(made->pixels.data(), CAIRO_FORMAT_ARGB32,
                                                                  width, height, made->stride);
    cairo_surface_t* source = surfaceOf(pixbuf.get());
    cairo_t* cairo = cairo_create(target);
    const double fullWidth = gdk_pixbuf_get_width(pixbuf.get());
    const double fullHeight = gdk_pixbuf_get_height(pixbuf.get());
    const double scale = std::max(width / fullWidth, height / fullHeight);
    cairo_translate(cairo, (width - fullWidth * scale) / 2, (height - fullHeight * scale) / 2);
    cairo_scale(cairo, scale, scale);
    cairo_set_source_surface(cairo, source, 0, 0);
    cairo_pattern_set_filter(cairo_get_source(cairo), CAIRO_FILTER_BILINEAR);
    cairo_pattern_set_extend(cairo_get_source(cairo), CAIRO_EXTEND_PAD);
    cairo_paint(cairo);
    const bool isDrawn = cairo_status(cairo) == CAIRO_STATUS_SUCCESS;
    cairo_destroy(cairo);
    cairo_surface_destroy(source);
    cairo_surface_finish(target);
    cairo_surface_destroy(target);
    return isDrawn ? made : nullptr;
}

}  // namespace platform
