#include <HeedbannerWidgetExtension/Views/EventCountdownView.h>
#include <HeedbannerWidgetExtension/Views/EventListViews.h>
#include <Views/Painters.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "Drawing.h"

using namespace hbr;
using namespace platform;
using enum WidgetFamily;

namespace {

PixelImage pixelsOfPng(const std::string& png, double width, double height, double scale) {
    const auto image = ImageBytes::recognize(png);
    return image ? paintPixels(layOut(photo(*image), {width, height}, {}), scale) : PixelImage{};
}

/// Share of the pixels that differ by more than smoothing may.
double differingShare(const PixelImage& a, const PixelImage& b) {
    if (a.width != b.width || a.height != b.height || a.pixels.empty()) return 1;
    constexpr int tolerance = 40;
    std::size_t count = 0;
    for (std::size_t i = 0; i < a.pixels.size(); i += 4) {
        bool differs = false;
        for (std::size_t part = i; part < i + 4; ++part)
            differs |=
                std::abs(static_cast<int>(a.pixels[part]) - static_cast<int>(b.pixels[part])) > tolerance;
        count += differs ? 1U : 0U;
    }
    return 4.0 * static_cast<double>(count) / static_cast<double>(a.pixels.size());
}

/// Compares with tests/pictures/NAME.png, or writes it when HEEDBANNER_RENEW_PICTURES is set.
void expectPicture(const std::string& name, const LaidOutTree& tree, double scale) {
    const auto kept = test::testPictures() / (name + ".png");
    if (std::getenv("HEEDBANNER_RENEW_PICTURES")) {
        std::ofstream(kept, std::ios::binary) << paintPng(tree, scale);
        return;
    }
    const auto expected = pixelsOfPng(test::readFile(kept), tree.size.width, tree.size.height, scale);
    const double share = differingShare(paintPixels(tree, scale), expected);
    if (share <= 0.002) return;
    const auto drawn = std::filesystem::path(testing::TempDir()) / (name + "-drawn.png");
    std::ofstream(drawn, std::ios::binary) << paintPng(tree, scale);
    ADD_FAILURE() << share * 100 << " % of the pixels differ between " << kept << " and " << drawn;
}

Event colored(Event event, const char* title, unsigned color) {
    event.title = title;
    event.color = Color::hex(color);
    return event;
}

TEST(WidgetPictures, LookAsTheyWereApproved) {
    setInterfaceFontFamily("Inter");
    test::Drawing drawing;
    const auto inputs = drawing.inputs();
    Event review = colored(drawing.event("1", 4, 49), "Design review", 0x3584E4);
    review.videoConferenceLinks = {test::callLink()};
    Event lesson = colored(drawing.event("2", 150, 210), "Piano lesson", 0x33B679);
    lesson.travelTime = 1800;
    Event task = colored(drawing.event("3", 300, 300), "Water the plants", 0xF6BF26);
    task.type = Event::EventType::appleReminder;
    Event own = colored(drawing.event("4", 1500, 1500), "Call Anna", 0xD50000);
    own.type = Event::EventType::hbrReminder;
    Event later = colored(drawing.event("5", 1600, 4000),
                          "A conference whose title runs on far beyond the end of its row", 0xFFFFFF);
    later.videoConferenceLinks = {test::callLink()};
    Event meeting = colored(drawing.event("6", -12, 48), "Board meeting of the whole company", 0x8E24AA);
    meeting.videoConferenceLinks = {test::callLink()};

    const NextEventEntry next{drawing.now, review};
    const UpcomingEventsEntry upcoming{drawing.now, {review, lesson, task, own, later}};
    const CurrentEventsEntry current{drawing.now, {meeting, review}};
    const CurrentEventsEntry nothing{drawing.now, {}};
    const auto light = [&](const auto& view, WidgetFamily family) { return drawing.draw(view, family); };
    const auto dark = [&](const auto& view, WidgetFamily family) {
        drawing.appearance = Appearance::dark;
        auto tree = drawing.draw(view, family);
        drawing.appearance = Appearance::light;
        return tree;
    };
    expectPicture("countdown-medium", light(NextEventCountdownWidgetView{next, inputs}, systemMedium), 1.25);
    expectPicture("upcoming-large", light(UpcomingEventsWidgetView{upcoming, inputs}, systemLarge), 1);
    expectPicture("upcoming-large-dark", dark(UpcomingEventsWidgetView{upcoming, inputs}, systemLarge), 1);
    expectPicture("current-small", light(CurrentEventsWidgetView{current, inputs}, systemSmall), 2);
    expectPicture("nothing-small-dark", dark(CurrentEventsWidgetView{nothing, inputs}, systemSmall), 1);
    setInterfaceFontFamily("");
}

}  // namespace
