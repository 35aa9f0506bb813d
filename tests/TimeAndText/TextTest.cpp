#include <TimeAndText/Text.h>

#include <gmock/gmock.h>

namespace platform {
namespace {

TEST(Text, WhatIsNotUtf8BecomesReplacementCharacters) {
    EXPECT_EQ(sanitizedUtf8("a\xff b\xc3"), "a\uFFFD b\uFFFD");
    EXPECT_EQ(sanitizedUtf8("é😀"), "é😀");
}

TEST(Text, TrimsEveryKindOfBlank) {
    EXPECT_EQ(trimmed("\u00A0\t\r\n é b\u2028\u3000 "), "é b");
    EXPECT_EQ(trimmed(" \u202F "), "");
    EXPECT_EQ(trimmed(" \xff "), "\xff");
    EXPECT_EQ(trimmed({}), "");
}

TEST(Text, ChangesCaseByTheLocalesRules) {
    EXPECT_EQ(lowercased("ÉTÉ İ"), "été i\u0307");
    EXPECT_EQ(uppercased("straße i", "de_DE"), "STRASSE I");
    EXPECT_EQ(uppercased("istanbul", "tr_TR"), "İSTANBUL");
    EXPECT_EQ(capitalizedFirstLetter("aujourd’hui À Paris", "fr_FR"), "Aujourd’hui À Paris");
    EXPECT_EQ(capitalizedFirstLetter("ijsland reis", "nl_NL"), "IJsland reis");
    EXPECT_EQ(capitalizedFirstLetter("istanbul", "tr_TR"), "İstanbul");
    EXPECT_EQ(capitalizedFirstLetter("", "en_US"), "");
}

TEST(Text, CountsWhatPeopleSeeAsCharacters) {
    const std::string family = "A👨‍👩‍👧‍👦e\u0301🇩🇪\r\n";
    EXPECT_EQ(characterCount(family), 5u);
    EXPECT_EQ(firstCharacters(family, 2), "A👨‍👩‍👧‍👦");
    EXPECT_EQ(firstCharacters(family, 3), "A👨‍👩‍👧‍👦e\u0301");
    EXPECT_EQ(firstCharacters(family, 99), family);
    EXPECT_EQ(firstCharacters(family, 0), "");
    EXPECT_EQ(characterCount("plain\nASCII"), 11u);
    EXPECT_EQ(characterCount("a\r\nb"), 3u);
    EXPECT_GT(characterCount("\xff\xfe\xc3"), 0u);
}

TEST(Text, ComparesWrittenFormsAlike) {
    EXPECT_TRUE(canonicallyEqual("Zo\u00EB", "Zoe\u0308"));
    EXPECT_FALSE(canonicallyEqual("Zoë", "Zoe"));
    EXPECT_FALSE(canonicallyEqual("ﬁ", "fi"));
    // As many marks above and below one letter as are sorted.
    std::string marked = "e", markedOtherwise = "e";
    for (int i = 0; i < 15; ++i) {
        marked += "\u0301\u0323";
        markedOtherwise += "\u0323\u0301";
    }
    EXPECT_TRUE(canonicallyEqual(marked + "a", markedOtherwise + "a"));
    EXPECT_FALSE(canonicallyEqual(marked + "\u0301", markedOtherwise + "\u0323"));
}

TEST(Text, SplitsAtASeparator) {
    using testing::ElementsAre;
    EXPECT_THAT(split("/a//b/", "/"), ElementsAre("", "a", "", "b", ""));
    EXPECT_THAT(split("/a//b/", "/", false), ElementsAre("a", "b"));
    EXPECT_THAT(split("ab", ""), ElementsAre("ab"));
    EXPECT_THAT(split("", ","), ElementsAre(""));
    EXPECT_THAT(words(" a\u00A0é\r\n\xff\u3000c "), ElementsAre("a", "é", "\xff", "c"));
}

TEST(Text, HasTheUsualChecksum) {
    EXPECT_EQ(crc32("123456789"), 0xCBF43926u);
    EXPECT_EQ(crc32(""), 0u);
    EXPECT_EQ(crc32({}), 0u);
}

}  // namespace
}  // namespace platform
