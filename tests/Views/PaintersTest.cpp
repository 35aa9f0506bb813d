#include <System/MainQueue.h>
#include <Values/Base64.h>
#include <Values/JsonText.h>
#include <Views/Painters.h>
#include <Views/PhotoDecoding.h>

#include <support/TestEnvironment.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>

#include <gtest/gtest.h>
#include <support/Threads.h>

using namespace platform;

namespace {

std::uint32_t pixelAt(const PixelImage& image, int x, int y) {
    std::uint32_t pixel = 0;
    std::memcpy(&pixel, image.pixels.data() + static_cast<std::ptrdiff_t>(y) * image.stride + x * 4, 4);
    return pixel;
}

ViewContext contextWith(const test::TestEnvironment& world) {
    ViewContext context;
    context.family = WidgetFamily::systemSmall;
    context.pictures = std::make_shared<PictureLibrary>(world);
    return context;
}

TEST(Painters, AWidgetIsRoundedBorderedAndTransparentAtItsCorners) {
    const auto tree = layOutWidget(text(""), contextWith(test::TestEnvironment()));
    for (const double scale : {1.0, 2.0}) {
        const auto image = paintPixels(tree, scale);
        ASSERT_EQ(image.width, 170 * scale);
        ASSERT_EQ(image.height, 170 * scale);
        EXPECT_EQ(pixelAt(image, 0, 0), 0U);
        EXPECT_EQ(pixelAt(image, image.width - 1, image.height - 1), 0U);
        EXPECT_EQ(pixelAt(image, image.width / 2, image.height / 2), 0xFFF7F7F9U);
        // Black at a tenth over the container, one device pixel wide.
        EXPECT_NEAR(pixelAt(image, image.width / 2, 0) & 0xFF, 0xF9 * 0.9, 2);
        EXPECT_EQ(pixelAt(image, image.width / 2, 1), 0xFFF7F7F9U);
    }
}

TEST(Painters, ATranslucentShapeHasNoSeamsAtAnyScale) {
    const View view = rectangle(3).foreground(Color::hex(0x3584E4).withAlpha(0.3)).frame(50, 21);
    for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
        const auto image = paintPixels(layOut(view, {57, 30}, {}), scale);
        const auto inside = pixelAt(image, image.width / 2, image.height / 2);
        const auto full = inside >> 24U;
        EXPECT_NEAR(full, 0.3 * 255, 1);
        // Everywhere but on the corners every pixel is the same; on them there is less of the colour.
        const Rect frame = {std::round(3.5 * scale), std::round(4.5 * scale), std::round(53.5 * scale),
                            std::round(25.5 * scale)};
        const double corner = std::ceil(3 * scale);
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                const double toSide = std::min(x - frame.x, frame.width - 1 - x);
                const double toEnd = std::min(y - frame.y, frame.height - 1 - y);
                if (toSide < 0 || toEnd < 0 || (toSide < corner && toEnd < corner)) continue;
                ASSERT_EQ(pixelAt(image, x, y), inside) << scale << ": " << x << ", " << y;
            }
        }
        std::size_t rim = 0;
        for (int y = 0; y < image.height; ++y) {
            for (int x = 0; x < image.width; ++x) {
                ASSERT_LE(pixelAt(image, x, y) >> 24U, full) << scale << ": " << x << ", " << y;
                const auto alpha = pixelAt(image, x, y) >> 24U;
                if (alpha > 0 && alpha < full) ++rim;
            }
        }
        // Four quarters of a circle.
        EXPECT_GE(rim, 8U) << scale;
        EXPECT_LE(rim, 60U) << scale;
    }
}

TEST(Painters, EveryFormatHasItsSignature) {
    const auto tree = layOutWidget(text("Weekly review 会議 🎉"), contextWith(test::TestEnvironment()));
    EXPECT_EQ(paintPng(tree, 1).substr(0, 8), "\x89PNG\r\n\x1a\n");
    EXPECT_NE(paintSvg(tree).find("viewBox=\"0 0 170 170\""), std::string::npos);
    EXPECT_EQ(paintPdf(tree).substr(0, 5), "%PDF-");
    EXPECT_EQ(treeText(tree), "Weekly review 会議 🎉\n");
}

/// 4 × 2 pixels: the left half red, the right half blue.
ImageBytes redAndBlue() {
    return ImageBytes::recognize(
               decodedBase64(
                   "iVBORw0KGgoAAAANSUhEUgAAAAQAAAACCAIAAADwyuo0AAAAE0lEQVR42mP4z8AARGDiPwMyBwBnsgf595"
                   "JWggAAAABJRU5ErkJggg==")
                   .value())
        .value();
}

TEST(Painters, APhotoFillsItsRoundedFrameWithoutBeingDistorted) {
    const auto tree = layOut(photo(redAndBlue(), 1e6), {20, 20}, contextWith(test::TestEnvironment()));
    const auto image = paintPixels(tree, 2);
    EXPECT_EQ(pixelAt(image, 0, 0), 0U);
    EXPECT_EQ(pixelAt(image, 39, 39), 0U);
    EXPECT_EQ(pixelAt(image, 4, 20), 0xFFFF0000U);
    EXPECT_EQ(pixelAt(image, 35, 20), 0xFF0000FFU);
    EXPECT_EQ(pixelAt(image, 20, 1) >> 24U, 0xFFU);
    EXPECT_NE(paintSvg(tree).find("<image"), std::string::npos);
}

TEST(Painters, AJpegIsAPhotoToo) {
    constexpr std::string_view red =
        "/9j/4AAQSkZJRgABAQAAAQABAAD/2wBDABsSFBcUERsXFhceHBsgKEIrKCUlKFE6PTBCYFVlZF9VXVtqeJmBanGQ"
        "c1tdhbWGkJ6jq62rZ4C8ybqmx5moq6T/2wBDARweHigjKE4rK06kbl1upKSkpKSkpKSkpKSkpKSkpKSkpKSkpKSk"
        "pKSkpKSkpKSkpKSkpKSkpKSkpKSkpKSkpKT/wAARCAAIAAgDASIAAhEBAxEB/8QAFQABAQAAAAAAAAAAAAAAAAAA"
        "AAT/xAAUEAEAAAAAAAAAAAAAAAAAAAAA/8QAFQEBAQAAAAAAAAAAAAAAAAAABAb/xAAUEQEAAAAAAAAAAAAAAAAA"
        "AAAA/9oADAMBAAIRAxEAPwCAANSP/9k=";
    const auto tree = layOut(photo(ImageBytes::recognize(decodedBase64(red).value()).value()), {20, 20},
                             contextWith(test::TestEnvironment()));
    const auto pixel = pixelAt(paintPixels(tree, 1), 10, 10);
    EXPECT_GT(pixel >> 16U & 0xFFU, 0xE0U);
    EXPECT_LT(pixel & 0xFFFFU, 0x2020U);
}

TEST(Painters, APhotoThatCannotBeDecodedIsNotDrawn) {
    auto enormous = redAndBlue().bytes();
    enormous[16] = '\x7F';
    for (const std::string& bytes :
         {redAndBlue().bytes().substr(0, 40), enormous, {"\xFF\xD8\xFF\xE0 no jpeg"}, {"GIF89a"}}) {
        const auto tree = layOut(photo(ImageBytes::recognize(bytes).value()), {20, 20},
                                 contextWith(test::TestEnvironment()));
        EXPECT_EQ(pixelAt(paintPixels(tree, 1), 10, 10), 0U);
    }
}

TEST(Painters, APhotoDecodedBesideTheMainThreadIsThereWhenItIsDone) {
    const auto image = redAndBlue();
    ASSERT_FALSE(isPhotoDecoded(image, 7, 7));
    bool isDone = false;
    auto dropped = decodePhoto(image, 9, 9, [] { ADD_FAILURE() << "nobody waits for this one"; });
    dropped.reset();
    const auto token = decodePhoto(image, 7, 7, [&isDone] { isDone = true; });
    EXPECT_TRUE(MainQueue::shared().runUntil([&isDone] { return isDone; }, 30));
    EXPECT_TRUE(isPhotoDecoded(image, 7, 7));
}

TEST(Painters, JsonHoldsTheTreeAndItsLinks) {
    const auto url = Url::parse("heedbanner://preview/1").value();
    const auto tree =
        layOut(link(url, text("Title").font(system(11).bold()).foreground(Color::hex(0xD95F00))), {200, 14},
               contextWith(test::TestEnvironment()));
    const auto json = treeJson(tree);
    EXPECT_EQ(*json.find("family")->asString(), "small");
    EXPECT_EQ(*json.find("width")->asInteger(), 200);
    const auto written = writeJson(json);
    for (const char* part : {R"("kind":"text")", R"("text":"Title")", R"("lines":1)", R"("truncated":false)",
                             R"("font":"11 bold")", R"("color":"#D95F00")",
                             R"("url":"heedbanner://preview/1")", R"("label":"Title")"})
        EXPECT_NE(written.find(part), std::string::npos) << part << " is not in " << written;
    EXPECT_EQ(json.find("links")->asArray()->at(0).find("frame")->asArray()->size(), 4U);
}

TEST(Painters, ASymbolIsPaintedInTheForegroundColour) {
    test::TestEnvironment world;
    world.home.write(
        "symbols/full.svg",
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 4 2"><rect width="4" height="2"/></svg>)");
    world.change().resourceDirectories = {world.home.path()};
    const View view = symbol("full").resizable().foreground(Color::hex(0x1A7F37));
    const auto tree = layOut(view, {40, 40}, contextWith(world));
    EXPECT_EQ(tree.root.children[0].frame, (Rect{0, 10, 40, 20}));
    const auto image = paintPixels(tree, 1);
    EXPECT_EQ(pixelAt(image, 20, 20), 0xFF1A7F37U);
    EXPECT_EQ(pixelAt(image, 20, 5), 0U);
    EXPECT_TRUE(world.diagnostics->all().empty());
}

TEST(Painters, AMissingOrBrokenSymbolIsReportedOnceAndTheRestIsDrawn) {
    test::TestEnvironment world;
    world.home.write("symbols/broken.svg", "<svg");
    world.change().resourceDirectories = {world.home.path()};
    const View view =
        zstack({}, {rectangle().foreground(Color::hex(0xD95F00)), symbol("broken"), symbol("absent")});
    const auto tree = layOut(view, {40, 40}, contextWith(world));
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(pixelAt(paintPixels(tree, 1), 20, 20), 0xFFD95F00U);
    const auto diagnostics = world.diagnostics->all();
    ASSERT_EQ(diagnostics.size(), 2U);
    EXPECT_EQ(diagnostics[0].file.filename(), "broken.svg");
    EXPECT_EQ(diagnostics[1].file.filename(), "absent.svg");
}

TEST(Painters, ThreadsDrawTheSamePicture) {
    const auto context = contextWith(test::TestEnvironment());
    const auto draw = [&] {
        return paintPng(layOutWidget(text("Vendredi 12:30 会議 اجتماع").lineLimit(2), context), 2);
    };
    const auto expected = draw();
    test::onThreads(4, [&](int) { EXPECT_EQ(draw(), expected); });
}

}  // namespace
