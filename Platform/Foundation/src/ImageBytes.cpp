#include <Foundation/ImageBytes.h>

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

}  // namespace

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
