#include <HbrUtils/HexFormatter.h>
#include <HbrUtils/Prefixes.h>

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace {

using namespace hbr;

TEST(HexFormatter, AcceptsUpToSixDigitsWhileTyping) {
    const HexFormatter formatter;
    for (const auto& [text, isValid] : std::vector<std::pair<std::string, bool>>{{"#1A2b3C", true},
                                                                                 {"", true},
                                                                                 {"#", true},
                                                                                 {"fff", true},
                                                                                 {"#1234567", false},
                                                                                 {"#12G", false},
                                                                                 {"##1", false}})
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

}  // namespace
