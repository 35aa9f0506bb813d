#include <HbrUtils/HexFormatter.h>
#include <HbrUtils/Prefixes.h>
#include <HbrUtils/RegexReplacement.h>
#include <HbrUtils/Truncation.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(HexFormatter, AcceptsUpToSixDigitsWhileTyping) {
    const HexFormatter formatter;
    const std::pair<const char*, bool> cases[] = {{"#1A2b3C", true}, {"", true},          {"#", true},
                                                  {"fff", true},     {"#1234567", false}, {"#12G", false},
                                                  {"##1", false}};
    for (const auto& [text, isValid] : cases)
        EXPECT_EQ(formatter.isPartialStringValid(text), isValid) << text;
}

TEST(HexFormatter, WritesTextsWithOneHash) {
    const HexFormatter formatter;
    EXPECT_EQ(formatter.string("#fff"), "#fff");
    EXPECT_EQ(formatter.string("fff"), "#fff");
    EXPECT_EQ(formatter.string(platform::PropertyValue(std::int64_t{255})), std::nullopt);
    EXPECT_EQ(formatter.getObjectValue("##fff"), "#fff");
}

TEST(Prefixes, OnlyTheFrontGoesAndOnlyOnce) {
    EXPECT_EQ(removingLeadingHash("##a#"), "#a#");
    EXPECT_EQ(deletingPrefix("mailto:mailto:a", "mailto:"), "mailto:a");
    EXPECT_EQ(deletingPrefix("Mailto:a", "mailto:"), "Mailto:a");
    EXPECT_EQ(deletingPrefix("e\u0301a", "e"), "e\u0301a");
    EXPECT_EQ(deletingPrefix("e\u0301a", "\u00E9"), "a");
    EXPECT_EQ(deletingPrefix("👩‍👧x", "👩"), "👩‍👧x");
    EXPECT_EQ(deletingPrefix("a", "ab"), "a");
    EXPECT_EQ(deletingPrefix("a", ""), "a");
}

TEST(Truncated, CountsWhatTheReaderSeesAsOneCharacter) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"abcdef", 5, "abcde…"},
        {"abcde", 5, "abcde"},
        {"abc", 0, ""},
        {"abc", -1, ""},
        {"", 3, ""},
        {"👩‍👩‍👧é🇩🇪x", 3, "👩‍👩‍👧é🇩🇪…"},
        {"e\u0301e\u0301", 1, "e\u0301…"},
    };
    for (const auto& [text, maxLength, expected] : cases)
        EXPECT_EQ(truncated(text, maxLength, "…"), expected) << text << maxLength;
}

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
