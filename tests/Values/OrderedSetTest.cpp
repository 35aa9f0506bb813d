#include <Values/OrderedSet.h>

#include <gmock/gmock.h>

#include <algorithm>

namespace platform {
namespace {

TEST(OrderedSet, KeepsTheFirstOfEqualElementsInOrderHoweverManyThereAre) {
    OrderedSet<std::string> set;
    std::vector<std::string> expected;
    for (const int number : {3, 1, 3, 2, 1}) {
        for (int i = 0; i < 12; ++i) {
            const auto text = std::to_string(number) + "." + std::to_string(i);
            const bool isNew = std::find(expected.begin(), expected.end(), text) == expected.end();
            if (isNew) expected.push_back(text);
            EXPECT_EQ(set.insert(text), isNew) << text;
        }
    }
    EXPECT_TRUE(set.contains("2.11"));
    EXPECT_FALSE(set.contains("2.12"));
    EXPECT_EQ(set.elements(), expected);
    EXPECT_EQ(std::move(set).elements(), expected);
}

}  // namespace
}  // namespace platform
