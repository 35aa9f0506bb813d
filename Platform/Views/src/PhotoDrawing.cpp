#include "PhotoDrawing.h"

#include "PixelDecoder.h"

#include <System/MainQueue.h>
#include <Views/PhotoDecoding.h>

#include <algorithm>
#include <cmath>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

#include <glib.h>

namespace platform {

namespace {

/// As many faces as the cards on a screen show; one takes 16 kB at double resolution.
constexpr std::size_t mostKept = 256;
/// Of a vector picture's photo, per point.
constexpr double pixelsPerPoint = 4;
constexpr double mostPixelsOfASide = 2048;

/// The photos decoded last. Constant after it was decoded: nullptr for one that cannot be.
class Photos {
  public:
    std::optional<std::shared_ptr<const Raster>> find(const ImageBytes& image, int width, int height) {
        const std::lock_guard lock(mutex_);
        const auto known = std::ranges::find_if(kept_, [&](const Kept& photo) {
            return photo.width == width && photo.height == height && photo.image == image;
        });
        return known == kept_.end() ? std::nullopt : std::optional(known->raster);
    }

    std::shared_ptr<const Raster> decode(const ImageBytes& image, int width, int height) {
        if (const auto known = find(image, width, height)) return *known;
        // Not under the lock: others paint meanwhile.
        auto raster = decodedPixels(image, width, height);
        const std::lock_guard lock(mutex_);
        kept_.push_back({image, width, height, raster});
        if (kept_.size() > mostKept) kept_.pop_front();
        return raster;
    }

  private:
    struct Kept {
        ImageBytes image;
        int width;
        int height;
        std::shared_ptr<const Raster> raster;
    };

    std::mutex mutex_;
    std::deque<Kept> kept_;
};

/// Never destroyed, as the decoding thread may be at work when the process ends.
Photos& photos() {
    static auto& shared = *new Photos();
    return shared;
}

struct Request {
    ImageBytes image;
    int width;
    int height;
    std::weak_ptr<std::function<void()>> done;
};

/// First in, first out. The thread pool's own queue carries only that there is one more.
class Requests {
  public:
    void push(Request request) {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(request));
    }
    Request pop() {
        const std::lock_guard lock(mutex_);
        Request next = std::move(waiting_.front());
        waiting_.pop_front();
        return next;
    }

  private:
    std::mutex mutex_;
    std::deque<Request> waiting_;
};

/// Never destroyed, as the photos.
Requests& requests() {
    static auto& shared = *new Requests();
    return shared;
}

void decodeNext(gpointer, gpointer) {
    const Request request = requests().pop();
    if (request.done.expired()) return;
    photos().decode(request.image, request.width, request.height);
    MainQueue::shared().async([asked = request.done] {
        if (const auto done = asked.lock()) (*done)();
    });
}

}  // namespace

bool isPhotoDecoded(const ImageBytes& image, int width, int height) {
    return photos().find(image, width, height).has_value();
}

std::shared_ptr<void> decodePhoto(const ImageBytes& image, int width, int height,
                                  std::function<void()> done) {
    static GThreadPool* const thread = g_thread_pool_new(decodeNext, nullptr, 1, FALSE, nullptr);
    auto token = std::make_shared<std::function<void()>>(std::move(done));
    requests().push({image, width, height, token});
    // Any pointer but a null one, which the pool does not take.
    g_thread_pool_push(thread, &requests(), nullptr);
    return token;
}

std::shared_ptr<const Raster> photoRaster(const ImageBytes& image, int width, int height) {
    if (width <= 0 || height <= 0) return nullptr;
    return photos().decode(image, width, height);
}

void drawPhoto(cairo_t* cairo, const ImageBytes& image, double width, double height, double opacity) {
    const double scale = std::min(pixelsPerPoint, mostPixelsOfASide / std::max({width, height, 1.0}));
    const auto pixels = [scale](double length) { return static_cast<int>(std::lround(length * scale)); };
    const auto raster = photoRaster(image, pixels(width), pixels(height));
    if (!raster) return;
    auto* bytes = const_cast<std::uint8_t*>(raster->pixels.data());
    cairo_surface_t* surface = cairo_image_surface_create_for_data(bytes, CAIRO_FORMAT_ARGB32, raster->width,
                                                                   raster->height, raster->stride);
    cairo_save(cairo);
    cairo_scale(cairo, width / raster->width, height / raster->height);
    cairo_set_source_surface(cairo, surface, 0, 0);
    cairo_paint_with_alpha(cairo, opacity);
    cairo_restore(cairo);
    cairo_surface_destroy(surface);
}

}  // namespace platform
