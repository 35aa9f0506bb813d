#include <HbrUtils/Unused/RegexReplacement.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(ReplacingRegex, ReplacesEveryMatchAndPassesOnABadPattern) {
    EXPECT_EQ(replacingRegex("a1b22", R"((\d+))", {}, {}, "<$1>"), "a<1>b<22>");
    EXPECT_EQ(replacingRegex("aA", "a", {.caseInsensitive = true}, {}, ""), "");
    EXPECT_EQ(replacingRegex("a.c abc", "a.c", {.ignoreMetacharacters = true}, {}, "x"), "x abc");
    EXPECT_THROW(replacingRegex("a", "(", {}, {}, ""), platform::RegularExpression::Error);
}

TEST(ReplacingRegex, ReplacesWhereTheMatchingOptionsAllow) {
    EXPECT_EQ(replacingRegex("aab", "a", {}, {.anchored = true}, "<$0>"), "<a>ab");
    EXPECT_EQ(replacingRegex("baa", "a", {}, {.anchored = true}, "x"), "baa");
    EXPECT_EQ(replacingRegex("aa", "^a", {}, {}, "x"), "xa");
    EXPECT_EQ(replacingRegex("ünd", "(ü)", {}, {.anchored = true}, "$1$1"), "üünd");
}

}  // namespace
