#include <Values/ImageBytes.h>

#include <string_view>

namespace platform {
namespace {

std::optional<ImageBytes::Format> formatOf(std::string_view bytes) {
    using Format = ImageBytes::Format;
    if (bytes.starts_with("\x89PNG\r\n\x1A\n")) return Format::png;
    if (bytes.starts_with("\xFF\xD8\xFF")) return Format::jpeg;
    if (bytes.starts_with("GIF87a") || bytes.starts_with("GIF89a")) return Format::gif;
    if (bytes.starts_with("RIFF") && bytes.substr(0, 12).ends_with("WEBP")) return Format::webp;
    return std::nullopt;
}

std::uint32_t bigEndian(std::string_view bytes) {
    std::uint32_t number = 0;
    for (const char byte : bytes)
        number = (number << 8U) | static_cast<unsigned char>(byte);
    return number;
}

std::uint32_t littleEndian(std::string_view bytes) {
    return bigEndian(std::string(bytes.rbegin(), bytes.rend()));
}

/// Goes from segment to segment up to the frame's head: what the thumbnail before it holds is ignored.
std::optional<std::size_t> frameOfJpeg(std::string_view bytes) {
    for (std::size_t at = 2; at + 4 <= bytes.size() && bytes[at] == '\xFF';) {
        const auto marker = static_cast<unsigned char>(bytes[at + 1]);
        if (marker == 0xFF) {
            ++at;
            continue;
        }
        const bool startsFrame =
            marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (startsFrame) return at + 9 <= bytes.size() ? std::optional(at) : std::nullopt;
        at += 2 + bigEndian(bytes.substr(at + 2, 2));
    }
    return std::nullopt;
}

std::optional<ImageBytes::PixelSize> sizeOfJpeg(std::string_view bytes) {
    const auto at = frameOfJpeg(bytes);
    if (!at) return std::nullopt;
    return ImageBytes::PixelSize{bigEndian(bytes.substr(*at + 7, 2)), bigEndian(bytes.substr(*at + 5, 2))};
}

/// A camera's progressive pictures have ten; a file of a few bytes may have thousands.
std::uint64_t scansOfJpeg(std::string_view bytes) {
    bytes = bytes.substr(frameOfJpeg(bytes).value_or(0));
    std::uint64_t scans = 0;
    for (auto at = bytes.find("\xFF\xDA"); at != std::string_view::npos; at = bytes.find("\xFF\xDA", at + 2))
        ++scans;
    return scans;
}

constexpr std::uint64_t million = 1'000'000;
constexpr std::uint64_t mostPixels = 16 * million;
constexpr std::uint64_t mostPixelsOfOneScan = 50 * million;
constexpr std::uint64_t mostPixelsOfAllScans = 200 * million;

}  // namespace

bool ImageBytes::isCostly() const {
    const auto size = pixelSize();
    if (!size) return true;
    const auto pixels = std::uint64_t{size->width} * size->height;
    const auto scans = format_ == Format::jpeg ? scansOfJpeg(*bytes_) : 0;
    return pixels > (scans == 1 ? mostPixelsOfOneScan : mostPixels) || pixels * scans > mostPixelsOfAllScans;
}

std::optional<ImageBytes::PixelSize> ImageBytes::pixelSize() const {
    const std::string_view all = *bytes_;
    switch (format_) {
        case Format::png:
            if (all.size() < 24 || all.substr(12, 4) != "IHDR") return std::nullopt;
            return PixelSize{bigEndian(all.substr(16, 4)), bigEndian(all.substr(20, 4))};
        case Format::gif:
            if (all.size() < 10) return std::nullopt;
            return PixelSize{littleEndian(all.substr(6, 2)), littleEndian(all.substr(8, 2))};
        case Format::jpeg:
            return sizeOfJpeg(all);
        case Format::webp:
            break;
    }
    return std::nullopt;
}

ImageBytes::ImageBytes(Format format, std::string bytes)
    : format_(format),
      bytes_(std::make_shared<const std::string>(std::move(bytes))),
      hash_(std::hash<std::string>{}(*bytes_)) {}

std::optional<ImageBytes> ImageBytes::recognize(std::string bytes) {
    const auto format = formatOf(bytes);
    if (!format) return std::nullopt;
    return ImageBytes(*format, std::move(bytes));
}

}  // namespace platform
