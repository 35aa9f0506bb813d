#include <HbrUtils/Unused/HexFormatter.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(HexFormatter, AcceptsUpToSixDigitsWhileTypingAndWritesOneHash) {
    const HexFormatter formatter;
    const std::pair<const char*, bool> cases[] = {{"#1A2b3C", true}, {"", true},          {"#", true},
                                                  {"fff", true},     {"#1234567", false}, {"#12G", false},
                                                  {"##1", false}};
    for (const auto& [text, isValid] : cases)
        EXPECT_EQ(formatter.isPartialStringValid(text), isValid) << text;
    EXPECT_EQ(formatter.string("#fff"), "#fff");
    EXPECT_EQ(formatter.string("fff"), "#fff");
    EXPECT_EQ(formatter.string(platform::PropertyValue(std::int64_t{255})), std::nullopt);
    EXPECT_EQ(formatter.getObjectValue("##fff"), "#fff");
    EXPECT_EQ(removingLeadingHash("##a#"), "#a#");
}

}  // namespace
