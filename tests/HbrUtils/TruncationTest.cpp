#include <HbrUtils/Truncation.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace hbr;

TEST(Truncated, CountsWhatTheReaderSeesAsOneCharacter) {
    struct Case {
        std::string text;
        int maxLength;
        std::string expected;
    };
    for (const auto& [text, maxLength, expected] :
         std::vector<Case>{{"abcdef", 5, "abcde…"},
                           {"abcde", 5, "abcde"},
                           {"abc", 0, ""},
                           {"abc", -1, ""},
                           {"", 3, ""},
                           {"👩‍👩‍👧é🇩🇪x", 3, "👩‍👩‍👧é🇩🇪…"},
                           {"e\u0301e\u0301", 1, "e\u0301…"}})
        EXPECT_EQ(truncated(text, maxLength, "…"), expected) << text << maxLength;
}

}  // namespace
