#include <TimeAndText/RegularExpression.h>

#include <gmock/gmock.h>
#include <support/Threads.h>

#include <atomic>

namespace platform {
namespace {

using testing::ElementsAre;
using Range = RegularExpression::Range;

TEST(RegularExpression, CountsInBytes) {
    const std::string text = "é日 zoom 😀 zoom";
    EXPECT_THAT(RegularExpression("zoom").allMatches(text), ElementsAre(Range{6, 10}, Range{16, 20}));
    EXPECT_THAT(RegularExpression("x*").allMatches("ax"), ElementsAre(Range{0, 0}, Range{1, 2}, Range{2, 2}));
    EXPECT_EQ(RegularExpression("zoom").firstMatch("meet"), std::nullopt);
    EXPECT_EQ(RegularExpression("b").firstMatch("\xff\xfe b"), (Range{3, 4}));
    EXPECT_EQ(RegularExpression("").firstMatch({}), (Range{0, 0}));
}

TEST(RegularExpression, HonoursItsOptions) {
    EXPECT_FALSE(RegularExpression("straße").matchesAnywhere("STRASSE STRAßE"));
    EXPECT_TRUE(RegularExpression("straße", {.caseInsensitive = true}).matchesAnywhere("STRAßE"));
    EXPECT_FALSE(RegularExpression("a.b").matchesAnywhere("a\nb"));
    EXPECT_TRUE(RegularExpression("a.b", {.dotMatchesLineSeparators = true}).matchesAnywhere("a\nb"));
    EXPECT_FALSE(RegularExpression("^b").matchesAnywhere("a\nb"));
    EXPECT_TRUE(RegularExpression("^b", {.anchorsMatchLines = true}).matchesAnywhere("a\nb"));
}

TEST(RegularExpression, ASearchThatRunsAwayDoesNotMatch) {
    const std::string text(60, 'a');
    EXPECT_FALSE(RegularExpression("(a+)+$").matchesAnywhere(text + "!"));
    EXPECT_FALSE(RegularExpression("(a|aa)+$").matchesAnywhere(text + "!"));
    EXPECT_FALSE(RegularExpression("(?:a|b)*c").matchesAnywhere(std::string(2'000'000, 'a')));
    EXPECT_EQ(RegularExpression("(a+)+$").replacingMatches(text + "!", "x"), text + "!");
}

TEST(RegularExpression, AnOrdinarySearchOfALongTextIsNotCutOff) {
    const std::string text = std::string(3'000'000, 'x') + "https://zoom.example/j/1";
    EXPECT_EQ(RegularExpression("https://[a-z.]*zoom").firstMatch(text), (Range{3'000'000, 3'000'012}));
    EXPECT_TRUE(RegularExpression("x.*zoom").matchesAnywhere(text));
}

TEST(RegularExpression, ReplacesByTemplate) {
    EXPECT_EQ(RegularExpression("(\\w+)@(\\w+)").replacingMatches("é a@b, c@d", "$2 at $1"),
              "é b at a, d at c");
    for (const auto& [replacement, expected] :
         {std::pair("$9", "bnn"), std::pair("<$1>", "b<>n<>n<>"), std::pair("$12", "b2n2n2"),
          std::pair("$", "b$n$n$"), std::pair("$x\\$0\\", "b$x$0n$x$0n$x$0"), std::pair("$0$0", "baanaanaa")})
        EXPECT_EQ(RegularExpression("a").replacingMatches("banana", replacement), expected);
    EXPECT_EQ(RegularExpression("(a)|(b)").replacingMatches("ab", "[$1$2$3]"), "[a][b]");
}

TEST(RegularExpression, ABadPatternSaysWhatIsWrong) {
    for (const char* pattern : {"(", "a{99999999999}", "[z-a]", "*", "\\"}) {
        EXPECT_FALSE(RegularExpression::compile(pattern).has_value()) << pattern;
    }
    EXPECT_FALSE(RegularExpression::compile(std::string(50'000, '(')).has_value());
    try {
        RegularExpression("a(b");
        FAIL() << "compiled";
    } catch (const RegularExpression::Error& error) {
        EXPECT_THAT(error.what(), testing::HasSubstr("\"a(b\""));
    }
}

TEST(RegularExpression, IsSharedByThreads) {
    const RegularExpression expression("([a-z]+)\\.example/(\\d+)");
    std::atomic<int> wrong = 0;
    test::onThreads(4, [&](int) {
        for (int i = 0; i < 500; ++i) {
            if (expression.firstMatch("see zoom.example/123 now") != Range{4, 20}) ++wrong;
        }
    });
    EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace platform
