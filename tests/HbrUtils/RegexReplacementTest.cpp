#include <HbrUtils/RegexReplacement.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(ReplacingRegex, ReplacesEveryMatchAndPassesOnABadPattern) {
    EXPECT_EQ(replacingRegex("a1b22", R"((\d+))", {}, "<$1>"), "a<1>b<22>");
    EXPECT_EQ(replacingRegex("aA", "a", {.caseInsensitive = true}, ""), "");
    EXPECT_THROW(replacingRegex("a", "(", {}, ""), platform::RegularExpression::Error);
}

}  // namespace
