#include <Views/Legibility.h>

#include <cmath>
#include <cstdlib>
#include <ostream>
#include <string>
#include <tuple>
#include <vector>

#include <gtest/gtest.h>

using namespace platform;

namespace {

Color pillGround(Color calendar, const Palette& palette) {
    return blended(calendar.withAlpha(0.3), palette.container);
}

/// Largest difference of a part, in steps of 255.
double distance(Color a, Color b) {
    return 255 *
           std::max({std::fabs(a.red - b.red), std::fabs(a.green - b.green), std::fabs(a.blue - b.blue)});
}

TEST(Legibility, ARatioIsOneForEqualColoursAndTwentyOneForBlackOnWhite) {
    EXPECT_DOUBLE_EQ(contrastRatio(Color::hex(0x808080), Color::hex(0x808080)), 1);
    EXPECT_DOUBLE_EQ(contrastRatio(Color::hex(0x000000), Color::hex(0xFFFFFF)), 21);
    EXPECT_DOUBLE_EQ(contrastRatio(Color::hex(0xFFFFFF), Color::hex(0x000000)), 21);
}

TEST(Legibility, PillsHaveTheMeasuredContrasts) {
    const std::tuple<unsigned, Appearance, double, double, double, double, double> cases[] = {
        {0xD50000, Appearance::light, 9.1, 4.8, 2.9, 2.8, 2.1},
        {0xFF7800, Appearance::light, 12.1, 5.7, 1.9, 3.3, 2.4},
        {0xF6BF26, Appearance::light, 13.9, 6.1, 1.4, 3.5, 2.6},
        {0x3584E4, Appearance::light, 11.3, 5.5, 2.5, 3.2, 2.4},
        {0x000000, Appearance::light, 7.7, 4.3, 9.4, 2.6, 1.9},
        {0xF6BF26, Appearance::dark, 7.2, 4.7, 4.7, 3.8, 3.8},
        {0x3584E4, Appearance::dark, 10.0, 6.1, 2.9, 4.5, 4.4},
        {0xFFFFFF, Appearance::dark, 5.5, 3.8, 6.1, 3.3, 3.3},
    };
    for (const auto& [calendarText, appearance, title, secondary, bar, green, orange] : cases) {
        const auto& palette = Palette::of(appearance);
        const Color calendar = Color::hex(calendarText);
        const Color ground = pillGround(calendar, palette);
        const Color capsule = blended(palette.gray.withAlpha(0.5), ground);
        const auto name = calendar.hexString();
        EXPECT_NEAR(contrastRatio(palette.primary, ground), title, 0.15) << name;
        EXPECT_NEAR(contrastRatio(blended(palette.secondary, ground), ground), secondary, 0.15) << name;
        EXPECT_NEAR(contrastRatio(calendar, ground), bar, 0.15) << name;
        EXPECT_NEAR(contrastRatio(palette.green, capsule), green, 0.15) << name;
        EXPECT_NEAR(contrastRatio(palette.orange, capsule), orange, 0.15) << name;
    }
}

TEST(Legibility, AColourIsMovedOnlyAsFarAsItMust) {
    const auto& light = Palette::of(Appearance::light);
    const auto& dark = Palette::of(Appearance::dark);
    const auto capsule = [&](unsigned calendar) {
        return blended(light.gray.withAlpha(0.5), pillGround(Color::hex(calendar), light));
    };
    const std::tuple<Color, Color, double, unsigned> cases[] = {
        {light.orange, capsule(0xD50000), 3.0, 0xB04C03},
        {light.orange, capsule(0xF6BF26), 3.0, 0xC65703},
        {Color::hex(0xF6BF26), pillGround(Color::hex(0xF6BF26), light), 1.8, 0xD9A60A},
        {Color::hex(0xF6BF26), pillGround(Color::hex(0xF6BF26), light), light.ringRatio(), 0xA27B04},
        {Color::hex(0xF6BF26), pillGround(Color::hex(0xF6BF26), dark), dark.ringRatio(), 0xF6BF26},
        {Color::hex(0xFFFFFF), pillGround(Color::hex(0xFFFFFF), light), 1.8, 0xBABABA},
        {Color::hex(0x000000), pillGround(Color::hex(0x000000), dark), 1.8, 0x454545},
        // Passes already.
        {light.orange, light.container, 3.0, 0xD95F00},
        {dark.orange, dark.container, 3.0, 0xFF9F0A},
    };
    for (const auto& [color, backdrop, ratio, expected] : cases) {
        const Color moved = legible(color, backdrop, ratio);
        EXPECT_LE(distance(moved, Color::hex(expected)), 11) << moved.hexString();
        EXPECT_GE(contrastRatio(moved, backdrop), ratio) << moved.hexString();
    }
    EXPECT_EQ(legible(light.orange, light.container, 3.0), light.orange);
}

TEST(Legibility, EveryCalendarColourIsLegibleOnItsPill) {
    for (const auto appearance : {Appearance::light, Appearance::dark}) {
        for (const auto contrast : {Contrast::normal, Contrast::high}) {
            const auto& palette = Palette::of(appearance, contrast);
            for (unsigned red = 0; red < 256; red += 51) {
                for (unsigned green = 0; green < 256; green += 51) {
                    for (unsigned blue = 0; blue < 256; blue += 51) {
                        const Color calendar = Color::hex(red << 16 | green << 8 | blue);
                        const Color ground = pillGround(calendar, palette);
                        const auto name = calendar.hexString();
                        EXPECT_GE(contrastRatio(blended(legibleSecondary(palette, ground), ground), ground),
                                  4.5)
                            << name;
                        const Color capsule = blended(palette.gray.withAlpha(0.5), ground);
                        for (const Color ink : {palette.orange, palette.green, palette.primary}) {
                            EXPECT_GE(contrastRatio(legible(ink, capsule, palette.symbolRatio()), capsule),
                                      palette.symbolRatio())
                                << name;
                        }
                        const Color faintCapsule = blended(palette.gray.withAlpha(0.3), ground);
                        const Color faint = legibleTranslucent(Palette::disabled(palette.primary),
                                                               faintCapsule, palette.symbolRatio());
                        EXPECT_GE(contrastRatio(blended(faint, faintCapsule), faintCapsule),
                                  palette.symbolRatio())
                            << name;
                        EXPECT_GE(contrastRatio(legible(calendar, ground, palette.decorationRatio()), ground),
                                  palette.decorationRatio())
                            << name;
                    }
                }
            }
        }
    }
}

}  // namespace
