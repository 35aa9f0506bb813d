#include "PhotoDrawing.h"

#include "WorkCounters.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <deque>
#include <mutex>
#include <string>

#include <librsvg/rsvg.h>

namespace platform {

namespace {

/// A portrait has a few million; more would only fill the memory.
constexpr double mostPixels = 50e6;
constexpr std::size_t mostKept = 32;

const char* mediaType(ImageBytes::Format format) {
    switch (format) {
        case ImageBytes::Format::png:
            return "image/png";
        case ImageBytes::Format::jpeg:
            return "image/jpeg";
        case ImageBytes::Format::gif:
            return "image/gif";
        case ImageBytes::Format::webp:
            return "image/webp";
    }
    return "";
}

/// Never with the locale's decimal comma.
std::string plain(double length) {
    std::array<char, 32> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), length, std::chars_format::fixed, 3);
    return {digits.data(), end.ptr};
}

/// The library of the vector pictures decodes the formats of photographs, too, and scales them well.
void drawInto(cairo_t* cairo, const ImageBytes& image, double width, double height) {
    const auto size = image.pixelSize();
    if (!size || static_cast<double>(size->width) * static_cast<double>(size->height) > mostPixels) return;
    count(workCounters().rasterizedPictures);
    gchar* encoded =
        g_base64_encode(reinterpret_cast<const guchar*>(image.bytes().data()), image.bytes().size());
    const auto box = "width=\"" + plain(width) + "\" height=\"" + plain(height) + "\"";
    const std::string svg =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" " + box + "><image " + box +
        " preserveAspectRatio=\"xMidYMid slice\" href=\"data:" + mediaType(image.format()) + ";base64," +
        encoded + "\"/></svg>";
    g_free(encoded);
    // A long attribute is refused unless the document is trusted; it is ours.
    GInputStream* stream =
        g_memory_input_stream_new_from_data(svg.data(), static_cast<gssize>(svg.size()), nullptr);
    RsvgHandle* handle =
        rsvg_handle_new_from_stream_sync(stream, nullptr, RSVG_HANDLE_FLAG_UNLIMITED, nullptr, nullptr);
    g_object_unref(stream);
    if (!handle) return;
    const RsvgRectangle viewport = {0, 0, width, height};
    rsvg_handle_render_document(handle, cairo, &viewport, nullptr);
    g_object_unref(handle);
}

struct KeptPhoto {
    ImageBytes image;
    int width;
    int height;
    std::shared_ptr<const Raster> raster;
};

}  // namespace

std::shared_ptr<const Raster> photoRaster(const ImageBytes& image, int width, int height) {
    if (width <= 0 || height <= 0) return nullptr;
    static std::mutex mutex;
    static std::deque<KeptPhoto> kept;
    const std::lock_guard lock(mutex);
    const auto known = std::ranges::find_if(kept, [&](const KeptPhoto& photo) {
        return photo.width == width && photo.height == height && photo.image == image;
    });
    if (known != kept.end()) return known->raster;

    auto made = std::make_shared<Raster>();
    made->width = width;
    made->height = height;
    made->stride = cairo_format_stride_for_width(CAIRO_FORMAT_ARGB32, width);
    made->pixels.resize(static_cast<std::size_t>(made->stride) * static_cast<std::size_t>(height));
    cairo_surface_t* surface = cairo_image_surface_create_for_data(made->pixels.data(), CAIRO_FORMAT_ARGB32,
                                                                   width, height, made->stride);
    cairo_t* cairo = cairo_create(surface);
    drawInto(cairo, image, width, height);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    kept.push_back({image, width, height, made});
    if (kept.size() > mostKept) kept.pop_front();
    return made;
}

void drawPhoto(cairo_t* cairo, const ImageBytes& image, double width, double height, double opacity) {
    cairo_push_group(cairo);
    drawInto(cairo, image, width, height);
    cairo_pop_group_to_source(cairo);
    cairo_paint_with_alpha(cairo, opacity);
}

}  // namespace platform
