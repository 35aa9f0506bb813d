#pragma once

#include <Views/PictureLibrary.h>

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <cairo.h>

namespace platform {

/// Coverage of a symbol, 8 bits a pixel, or premultiplied ARGB of a picture; never changed once made.
struct Raster {
    int width = 0;
    int height = 0;
    int stride = 0;
    std::vector<std::uint8_t> pixels;
};

/// Colours of a picture's two inks.
struct PictureInks {
    std::uint32_t ink = 0;
    std::uint32_t accent = 0;

    friend auto operator<=>(const PictureInks&, const PictureInks&) = default;
};

struct PictureLibrary::State {
    struct File {
        std::string svg;
        Size size{18, 18};
        bool isUsable = false;
    };
    using RasterKey = std::tuple<std::string, int, int, std::optional<PictureInks>>;

    EnvironmentRef environment;
    std::mutex mutex;
    std::map<std::string, File> files;
    std::map<RasterKey, std::shared_ptr<const Raster>> rasters;

    /// `path`: "symbols/video.fill.svg". The reference stays good; the mutex must be held.
    const File& file(const std::string& path);
    /// Nothing when the file cannot be used.
    std::shared_ptr<const Raster> mask(const std::string& path, int width, int height);
    std::shared_ptr<const Raster> image(const std::string& path, int width, int height, PictureInks inks);
    /// Draws the file into the rectangle (0, 0, width, height), its inks tinted when they are given.
    void draw(cairo_t* cairo, const std::string& path, double width, double height,
              std::optional<PictureInks> inks);

  private:
    static void drawFile(cairo_t* cairo, const File& file, double width, double height,
                         std::optional<PictureInks> inks);
    std::shared_ptr<const Raster> raster(const std::string& path, int width, int height,
                                         std::optional<PictureInks> inks);
};

std::string picturePath(const std::string& folder, const std::string& name);

}  // namespace platform
