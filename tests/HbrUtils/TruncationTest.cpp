#include <HbrUtils/Truncation.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(Truncated, CountsWhatTheReaderSeesAsOneCharacter) {
    const std::tuple<const char*, int, const char*> cases[] = {
        {"abcdef", 5, "abcde…"},
        {"abcde", 5, "abcde"},
        {"abc", 0, ""},
        {"abc", -1, ""},
        {"", 3, ""},
        {"👩‍👩‍👧é🇩🇪x", 3, "👩‍👩‍👧é🇩🇪…"},
        {"e\u0301e\u0301", 1, "e\u0301…"}};
    for (const auto& [text, maxLength, expected] : cases)
        EXPECT_EQ(truncated(text, maxLength, "…"), expected) << text << maxLength;
}

}  // namespace
