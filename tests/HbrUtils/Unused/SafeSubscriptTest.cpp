#include <HbrUtils/Unused/Optionals.h>
#include <HbrUtils/Unused/SafeSubscript.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(ElementAt, GivesNothingBeyondTheBounds) {
    const std::vector<int> list{7, 8};
    EXPECT_EQ(*elementAt(list, 1), 8);
    EXPECT_EQ(elementAt(list, 2), nullptr);
    EXPECT_EQ(elementAt(list, -1), nullptr);
    EXPECT_EQ(takeIf(list, [](const auto& value) { return value.empty(); }), std::nullopt);
}

}  // namespace
