#include "PictureState.h"
#include "WorkCounters.h"

#include <System/Diagnostics.h>
#include <System/ResourceBundle.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>

#include <librsvg/rsvg.h>

namespace platform {

namespace {

struct UnrefHandle {
    void operator()(RsvgHandle* handle) const { g_object_unref(handle); }
};
using Handle = std::unique_ptr<RsvgHandle, UnrefHandle>;

Handle loaded(const std::string& svg) {
    return Handle(
        rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(svg.data()), svg.size(), nullptr));
}

/// Of the viewBox, else of width and height.
std::optional<Size> sizeIn(RsvgHandle* handle) {
    gboolean hasWidth = FALSE, hasHeight = FALSE, hasBox = FALSE;
    RsvgLength width, height;
    RsvgRectangle box;
    rsvg_handle_get_intrinsic_dimensions(handle, &hasWidth, &width, &hasHeight, &height, &hasBox, &box);
    if (hasBox && box.width > 0 && box.height > 0) return Size{box.width, box.height};
    if (hasWidth && hasHeight && width.length > 0 && height.length > 0)
        return Size{width.length, height.length};
    return std::nullopt;
}

std::string tintingStylesheet(const PictureInks& inks) {
    std::array<char, 256> css{};
    std::snprintf(css.data(), css.size(),
                  ".ink{stroke:#%06x !important}.inkFill{fill:#%06x !important}"
                  ".accent{stroke:#%06x !important}",
                  inks.ink, inks.ink, inks.accent);
    return css.data();
}

}  // namespace

std::string picturePath(const std::string& folder, const std::string& name) {
    return folder + "/" + name + ".svg";
}

PictureLibrary::PictureLibrary(EnvironmentRef environment) : state_(std::make_unique<State>()) {
    state_->environment = std::move(environment);
}

PictureLibrary::~PictureLibrary() = default;

Size PictureLibrary::intrinsicSize(const std::string& folder, const std::string& name) const {
    const std::lock_guard lock(state_->mutex);
    return state_->file(picturePath(folder, name)).size;
}

const PictureLibrary::State::File& PictureLibrary::State::file(const std::string& path) {
    if (const auto known = files.find(path); known != files.end()) return known->second;
    File& file = files[path];
    const auto complain = [&](const std::filesystem::path& where, std::string text) {
        environment->diagnostics->report(
            {.file = where, .line = std::nullopt, .field = {}, .text = std::move(text)});
    };
    const auto where = findResource(*environment, path);
    if (!where) {
        complain(path, "the picture is in no resource folder; nothing is drawn in its place");
        return file;
    }
    std::ifstream in(*where, std::ios::binary);
    file.svg.assign(std::istreambuf_iterator<char>(in), {});
    const Handle handle = loaded(file.svg);
    const auto size = handle ? sizeIn(handle.get()) : std::nullopt;
    if (!size) {
        complain(*where, "not an SVG file with a size; nothing is drawn in its place");
        return file;
    }
    file.size = *size;
    file.isUsable = true;
    return file;
}

void PictureLibrary::State::drawFile(cairo_t* cairo, const File& file, double width, double height,
                                     std::optional<PictureInks> inks) {
    count(workCounters().rasterizedPictures);
    const Handle handle = loaded(file.svg);
    if (!handle) return;
    if (inks) {
        const auto css = tintingStylesheet(*inks);
        rsvg_handle_set_stylesheet(handle.get(), reinterpret_cast<const guint8*>(css.data()), css.size(),
                                   nullptr);
    }
    const RsvgRectangle viewport = {0, 0, width, height};
    rsvg_handle_render_document(handle.get(), cairo, &viewport, nullptr);
}

void PictureLibrary::State::draw(cairo_t* cairo, const std::string& path, double width, double height,
                                 std::optional<PictureInks> inks) {
    const std::lock_guard lock(mutex);
    const File& source = file(path);
    if (source.isUsable) drawFile(cairo, source, width, height, inks);
}

std::shared_ptr<const Raster> PictureLibrary::State::raster(const std::string& path, int width, int height,
                                                            std::optional<PictureInks> inks) {
    const std::lock_guard lock(mutex);
    const File& source = file(path);
    if (!source.isUsable || width <= 0 || height <= 0) return nullptr;
    auto& known = rasters[{path, width, height, inks}];
    if (known) return known;
    const cairo_format_t format = inks ? CAIRO_FORMAT_ARGB32 : CAIRO_FORMAT_A8;
    auto made = std::make_shared<Raster>();
    made->width = width;
    made->height = height;
    made->stride = cairo_format_stride_for_width(format, width);
    made->pixels.resize(static_cast<std::size_t>(made->stride) * static_cast<std::size_t>(height));
    cairo_surface_t* surface =
        cairo_image_surface_create_for_data(made->pixels.data(), format, width, height, made->stride);
    cairo_t* cairo = cairo_create(surface);
    drawFile(cairo, source, width, height, inks);
    cairo_destroy(cairo);
    cairo_surface_finish(surface);
    cairo_surface_destroy(surface);
    known = made;
    return known;
}

std::shared_ptr<const Raster> PictureLibrary::State::mask(const std::string& path, int width, int height) {
    return raster(path, width, height, std::nullopt);
}

std::shared_ptr<const Raster> PictureLibrary::State::image(const std::string& path, int width, int height,
                                                           PictureInks inks) {
    return raster(path, width, height, inks);
}

}  // namespace platform
