#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace platform {

/// A picture as the bytes of its file, recognised by their first ones; not decoded. Copies share the bytes.
class ImageBytes {
  public:
    enum class Format { png, jpeg, gif, webp };
    struct PixelSize {
        std::uint32_t width = 0;
        std::uint32_t height = 0;
        friend bool operator==(const PixelSize&, const PixelSize&) = default;
    };

    /// Nothing for bytes that begin like none of the formats.
    static std::optional<ImageBytes> recognize(std::string bytes);

    Format format() const { return format_; }
    /// As the file's head says; nothing when it is unknown, and for WebP.
    std::optional<PixelSize> pixelSize() const;
    /// Decoding may take more memory or time than a picture is worth: it has more than 16 million pixels (50
    /// as a JPEG in one scan, which can be decoded at a fraction of its size), its size is unknown, or
    /// the scans of a progressive JPEG together decode more than 200 million pixels.
    bool isCostly() const;
    const std::string& bytes() const { return *bytes_; }
    /// Equal for equal bytes.
    std::size_t hash() const { return hash_; }

    friend bool operator==(const ImageBytes& a, const ImageBytes& b) {
        return a.bytes_ == b.bytes_ || (a.hash_ == b.hash_ && *a.bytes_ == *b.bytes_);
    }

  private:
    ImageBytes(Format format, std::string bytes);

    Format format_;
    std::shared_ptr<const std::string> bytes_;
    std::size_t hash_;
};

}  // namespace platform

template <>
struct std::hash<platform::ImageBytes> {
    std::size_t operator()(const platform::ImageBytes& image) const noexcept { return image.hash(); }
};
