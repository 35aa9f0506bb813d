#include <Views/Painters.h>

#include <cstring>
#include <memory>
#include <stdexcept>

#include <png.h>

namespace platform {

namespace {

void append(png_structp png, png_bytep bytes, png_size_t count) {
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), count);
}

[[noreturn]] void fail(png_structp, png_const_charp message) {
    throw std::runtime_error(message);
}

/// Straight RGBA of one row of premultiplied ARGB.
void straighten(const std::uint8_t* row, int width, std::vector<std::uint8_t>& rgba) {
    for (int x = 0; x < width; ++x) {
        std::uint32_t pixel = 0;
        std::memcpy(&pixel, row + static_cast<std::ptrdiff_t>(x) * 4, 4);
        const std::uint32_t alpha = pixel >> 24;
        const auto part = [&](unsigned shift) {
            const std::uint32_t value = (pixel >> shift) & 0xFF;
            if (alpha == 255 || alpha == 0) return static_cast<std::uint8_t>(value);
            return static_cast<std::uint8_t>((value * 255 + alpha / 2) / alpha);
        };
        auto* out = rgba.data() + static_cast<std::ptrdiff_t>(x) * 4;
        out[0] = part(16);
        out[1] = part(8);
        out[2] = part(0);
        out[3] = static_cast<std::uint8_t>(alpha);
    }
}

struct Writer {
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, nullptr);
    png_infop info = png_create_info_struct(png);
    Writer() = default;
    ~Writer() { png_destroy_write_struct(&png, &info); }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;
};

}  // namespace

std::string paintPng(const LaidOutTree& tree, double scale) {
    const PixelImage image = paintPixels(tree, scale);
    std::string bytes;
    Writer writer;
    png_set_write_fn(writer.png, &bytes, append, nullptr);
    // Flat areas and text: filters cost four times the work of the compression and save nothing.
    png_set_filter(writer.png, 0, PNG_FILTER_NONE);
    png_set_compression_level(writer.png, 1);
    png_set_IHDR(writer.png, writer.info, static_cast<png_uint_32>(image.width),
                 static_cast<png_uint_32>(image.height), 8, PNG_COLOR_TYPE_RGBA, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_sRGB(writer.png, writer.info, PNG_sRGB_INTENT_PERCEPTUAL);
    png_write_info(writer.png, writer.info);
    std::vector<std::uint8_t> rgba(static_cast<std::size_t>(image.width) * 4);
    for (int y = 0; y < image.height; ++y) {
        straighten(image.pixels.data() + static_cast<std::ptrdiff_t>(y) * image.stride, image.width, rgba);
        png_write_row(writer.png, rgba.data());
    }
    png_write_end(writer.png, nullptr);
    return bytes;
}

}  // namespace platform
