#include <Values/PropertyList.h>
#include <Values/PropertyValue.h>

#include <gtest/gtest.h>

#include <cmath>

using namespace platform;

TEST(PropertyValue, NumberKindsConvertOnlyWhenNothingIsLost) {
    struct Case {
        PropertyValue stored;
        std::optional<bool> asBool;
        std::optional<std::int64_t> asInteger;
        std::optional<double> asDouble;
    };
    constexpr std::int64_t largest = INT64_MAX;
    const Case cases[] = {
        {true, true, 1, 1.0},
        {false, false, 0, 0.0},
        {0, false, 0, 0.0},
        {1, true, 1, 1.0},
        {2, {}, 2, 2.0},
        {-1, {}, -1, -1.0},
        {1.0, true, 1, 1.0},
        {5.0, {}, 5, 5.0},
        {5.5, {}, {}, 5.5},
        {-9223372036854775808.0, {}, INT64_MIN, -9223372036854775808.0},
        {9223372036854775808.0, {}, {}, 9223372036854775808.0},
        {std::numeric_limits<double>::infinity(), {}, {}, std::numeric_limits<double>::infinity()},
        {largest, {}, largest, {}},
        {"1", {}, {}, {}},
        {"true", {}, {}, {}},
        {Data{1}, {}, {}, {}},
        {PropertyArray{1}, {}, {}, {}},
    };
    for (const Case& each : cases) {
        SCOPED_TRACE(writeXmlPropertyList(each.stored));
        EXPECT_EQ(each.stored.asBool(), each.asBool);
        EXPECT_EQ(each.stored.asInteger(), each.asInteger);
        EXPECT_EQ(each.stored.asDouble(), each.asDouble);
    }
    EXPECT_FALSE(PropertyValue(std::nan("")).asInteger());
}

TEST(PropertyValue, AListWithOneElementOfAWrongTypeHasTheWrongType) {
    EXPECT_EQ(PropertyValue(PropertyArray{"a", "b"}).asStrings(), (std::vector<std::string>{"a", "b"}));
    EXPECT_FALSE(PropertyValue(PropertyArray{"a", 1}).asStrings());
    EXPECT_EQ(PropertyValue(PropertyArray{1, 5.0, true}).asIntegers(), (std::vector<std::int64_t>{1, 5, 1}));
    EXPECT_FALSE(PropertyValue(PropertyArray{1, 5.5}).asIntegers());
    EXPECT_FALSE(PropertyValue("a").asStrings());
}
