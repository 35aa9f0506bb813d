#include "StackDistribution.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace platform;
using testing::ElementsAreArray;

StackItem fixed(double length) {
    return {.lengthFor = [length](auto) { return length; }};
}
/// Takes what it is offered, down to its least length and up to its ideal one.
StackItem compressible(double least, double ideal) {
    return {.flexibility = Flexibility::compressible, .lengthFor = [=](std::optional<double> offered) {
                return std::clamp(offered.value_or(ideal), least, ideal);
            }};
}
StackItem stretching(double ideal) {
    return {.flexibility = Flexibility::stretching,
            .lengthFor = [=](std::optional<double> offered) { return offered.value_or(ideal); }};
}
StackItem spacer(double least) {
    return {.isSpacer = true, .minimumLength = least, .lengthFor = {}};
}

TEST(StackDistribution, ServesFixedThenCompressibleThenStretchingItemsAndGivesTheRestToSpacers) {
    struct Case {
        std::vector<StackItem> items;
        double spacing;
        std::optional<double> available;
        std::vector<double> lengths;
    };
    const Case cases[] = {
        {{}, 8, 100, {}},
        {{fixed(30), fixed(20)}, 10, 100, {30, 20}},
        {{fixed(80), fixed(80)}, 0, 100, {80, 80}},
        // Spacing is taken off first; those that stretch share what is left.
        {{stretching(5), fixed(30), stretching(5)}, 10, 100, {25, 30, 25}},
        {{stretching(5), fixed(100), stretching(5)}, 0, 100, {0, 100, 0}},
        // The shorter one is served first, so nothing is compressed while the ideal lengths fit.
        {{compressible(10, 80), compressible(10, 20)}, 0, 100, {80, 20}},
        {{compressible(10, 80), compressible(10, 20)}, 0, 90, {70, 20}},
        {{compressible(10, 60), compressible(10, 60)}, 0, 100, {50, 50}},
        {{compressible(45, 60), compressible(10, 50)}, 0, 60, {45, 30}},
        {{stretching(5), compressible(10, 60)}, 0, 50, {25, 25}},
        // Spacers have no spacing beside them and keep their least length.
        {{fixed(20), spacer(5), fixed(20), spacer(5)}, 10, 100, {20, 30, 20, 30}},
        {{fixed(60), spacer(5), fixed(60)}, 10, 100, {60, 5, 60}},
        // Without an end, each takes its ideal length.
        {{fixed(20), compressible(10, 60), stretching(7), spacer(5)}, 10, {}, {20, 60, 7, 5}}};
    for (const Case& c : cases)
        EXPECT_THAT(distribute(c.items, c.spacing, c.available), ElementsAreArray(c.lengths));
    EXPECT_THAT(gapsBefore({fixed(1), fixed(1), spacer(1), fixed(1)}, 8), ElementsAreArray({0, 8, 0, 0}));
}

}  // namespace
