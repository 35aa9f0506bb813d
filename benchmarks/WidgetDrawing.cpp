// What it takes to draw a large list widget at two device pixels a point, and below it the floor: the same
// texts shaped by Pango and painted by Cairo with nothing around them.

#include <HeedbannerWidgetExtension/Views/EventListViews.h>
#include <System/Environment.h>
#include <Views/DrawingWork.h>
#include <Views/Painters.h>

#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <pango/pangocairo.h>

namespace {

using namespace platform;

constexpr double scale = 2;

hbr::Event event(Date now, int hour, const char* title, unsigned color, bool hasCall) {
    hbr::Event event;
    event.id = title;
    event.title = title;
    event.color = Color::hex(color);
    event.startDate = now.addingTimeInterval(hour * 3600.0);
    event.endDate = event.startDate.addingTimeInterval(2700);
    if (hasCall) {
        event.videoConferenceLinks = {
            {.service = {}, .url = Url::parse("https://meet.example.com/a").value()}};
    }
    return event;
}

/// A large widget with six rows, in a world that stands still.
class LargeWidget {
  public:
    LargeWidget() : world_(makeWorld()), formatters_(world_), strings_(world_) {
        Environment::setCurrent(world_);
        const Date now = world_->now();
        entry_ = {
            now,
            {event(now, 1, "Weekly planning", 0x3584E4, true),
             event(now, 2, "Dentist, remember the insurance card and the pictures", 0xD50000, false),
             event(now, 3, "設計レビュー 🎉", 0xF6BF26, true), event(now, 5, "Sprint review", 0x8E24AA, true),
             event(now, 6, "اجتماع الفريق", 0x33B679, false), event(now, 26, "Piano", 0xFF7800, false)}};
        context_.family = WidgetFamily::systemLarge;
        context_.now = now;
        context_.scale = scale;
        context_.pictures = std::make_shared<PictureLibrary>(world_);
    }

    LaidOutTree layOut() const {
        const hbr::EventViewInputs inputs{settings_, formatters_, strings_};
        return layOutWidget(hbr::UpcomingEventsWidgetView{entry_, inputs}.body(context_), context_);
    }

  private:
    static EnvironmentRef makeWorld() {
        auto world = std::make_shared<Environment>();
        world->clock = [] { return Date(794307600); };
        world->resourceDirectories = {HEEDBANNER_BUILD_RESOURCES};
        return world;
    }

    EnvironmentRef world_;
    hbr::Formatters formatters_;
    hbr::WidgetStrings strings_;
    hbr::EventViewSettings settings_{.timeOffset = 300};
    hbr::UpcomingEventsEntry entry_;
    ViewContext context_;
};

const LargeWidget& widget() {
    static const LargeWidget widget;
    return widget;
}

/// View values, formatted texts, layout; text that did not change is not shaped again.
void layOutLargeWidget(benchmark::State& state) {
    const auto warm = widget().layOut();
    const auto before = DrawingWork::soFar();
    for (auto _ : state)
        benchmark::DoNotOptimize(widget().layOut());
    state.counters["shaped"] = static_cast<double>((DrawingWork::soFar() - before).shapedTexts);
}
BENCHMARK(layOutLargeWidget)->Unit(benchmark::kMicrosecond);

void paintLargeWidget(benchmark::State& state) {
    const auto tree = widget().layOut();
    paintPixels(tree, scale);
    const auto before = DrawingWork::soFar();
    for (auto _ : state)
        benchmark::DoNotOptimize(paintPixels(tree, scale));
    const auto work = DrawingWork::soFar() - before;
    state.counters["shaped"] = static_cast<double>(work.shapedTexts);
    state.counters["rasterized"] = static_cast<double>(work.rasterizedPictures);
}
BENCHMARK(paintLargeWidget)->Unit(benchmark::kMicrosecond);

/// One pixel a point, where each glyph is put exactly where it belongs.
void paintLargeWidgetCoarsely(benchmark::State& state) {
    const auto tree = widget().layOut();
    for (auto _ : state)
        benchmark::DoNotOptimize(paintPixels(tree, 1));
}
BENCHMARK(paintLargeWidgetCoarsely)->Unit(benchmark::kMicrosecond);

void encodeLargeWidgetAsPng(benchmark::State& state) {
    const auto tree = widget().layOut();
    for (auto _ : state)
        benchmark::DoNotOptimize(paintPng(tree, scale));
}
BENCHMARK(encodeLargeWidgetAsPng)->Unit(benchmark::kMicrosecond);

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};

/// The widget's texts as Pango layouts made again each time.
class BareTexts {
  public:
    BareTexts() : texts_(widget().layOut().texts()) {
        pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(fontMap_.get()), 72);
        context_.reset(pango_font_map_create_context(fontMap_.get()));
        font_ = pango_font_description_from_string("Inter, Cantarell, Noto Sans, DejaVu Sans 11");
    }
    ~BareTexts() { pango_font_description_free(font_); }
    BareTexts(const BareTexts&) = delete;
    BareTexts& operator=(const BareTexts&) = delete;

    template <class Use>
    void forEach(const Use& use) const {
        for (const auto& text : texts_) {
            const std::unique_ptr<PangoLayout, Unref> layout(pango_layout_new(context_.get()));
            pango_layout_set_font_description(layout.get(), font_);
            pango_layout_set_text(layout.get(), text.data(), static_cast<int>(text.size()));
            use(layout.get());
        }
    }

  private:
    std::vector<std::string> texts_;
    std::unique_ptr<PangoFontMap, Unref> fontMap_{pango_cairo_font_map_new()};
    std::unique_ptr<PangoContext, Unref> context_;
    PangoFontDescription* font_ = nullptr;
};

void floorPangoShapesTheTexts(benchmark::State& state) {
    const BareTexts texts;
    for (auto _ : state) {
        int width = 0;
        texts.forEach([&](PangoLayout* layout) { pango_layout_get_size(layout, &width, nullptr); });
        benchmark::DoNotOptimize(width);
    }
}
BENCHMARK(floorPangoShapesTheTexts)->Unit(benchmark::kMicrosecond);

void floorCairoPaintsTheTexts(benchmark::State& state) {
    const BareTexts texts;
    for (auto _ : state) {
        cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 728, 764);
        cairo_surface_set_device_scale(surface, scale, scale);
        cairo_t* cairo = cairo_create(surface);
        double y = 20;
        texts.forEach([&](PangoLayout* layout) {
            cairo_move_to(cairo, 20, y);
            pango_cairo_show_layout(cairo, layout);
            y += 20;
        });
        cairo_destroy(cairo);
        cairo_surface_destroy(surface);
    }
}
BENCHMARK(floorCairoPaintsTheTexts)->Unit(benchmark::kMicrosecond);

/// The same pixels through Cairo's own writer.
void floorCairoWritesThePng(benchmark::State& state) {
    const auto tree = widget().layOut();
    const auto append = [](void* bytes, const unsigned char* data, unsigned int count) {
        static_cast<std::string*>(bytes)->append(reinterpret_cast<const char*>(data), count);
        return CAIRO_STATUS_SUCCESS;
    };
    for (auto _ : state) {
        auto image = paintPixels(tree, scale);
        cairo_surface_t* surface = cairo_image_surface_create_for_data(
            image.pixels.data(), CAIRO_FORMAT_ARGB32, image.width, image.height, image.stride);
        std::string bytes;
        cairo_surface_write_to_png_stream(surface, append, &bytes);
        cairo_surface_destroy(surface);
        benchmark::DoNotOptimize(bytes);
    }
}
BENCHMARK(floorCairoWritesThePng)->Unit(benchmark::kMicrosecond);

}  // namespace
