#include <TimeAndText/Date.h>

#include <gtest/gtest.h>

namespace platform {
namespace {

TEST(Date, DescribesItselfInUtc) {
    EXPECT_EQ(Date().description(), "2001-01-01 00:00:00 +0000");
    EXPECT_EQ(Date::since1970(-0.5).description(), "1969-12-31 23:59:59 +0000");
    EXPECT_EQ(Date::since1970(1772617260.9).description(), "2026-03-04 09:41:00 +0000");
}

TEST(Rfc3339, ReadsWhatIsWellFormedAndRefusesTheRest) {
    const char* const cases[][2] = {
        // null: refused
        {"2026-03-04T09:41:00Z", "2026-03-04T09:41:00.000Z"},
        {"2026-03-04 09:41:00.25+02:00", "2026-03-04T07:41:00.250Z"},
        {"2026-03-04t23:30:00-01:30", "2026-03-05T01:00:00.000Z"},
        {"2024-02-29T00:00:00.123456789z", "2024-02-29T00:00:00.123Z"},
        {"2016-12-31T23:59:60Z", "2016-12-31T23:59:59.999Z"},
        {"0001-01-01T00:00:00Z", "0001-01-01T00:00:00.000Z"},
        {"2026-02-29T00:00:00Z", nullptr},
        {"2026-13-01T00:00:00Z", nullptr},
        {"2026-00-01T00:00:00Z", nullptr},
        {"2026-03-04T24:00:00Z", nullptr},
        {"2026-03-04T09:60:00Z", nullptr},
        {"2026-03-04T09:41:61Z", nullptr},
        {"2026-03-04T09:41Z", nullptr},
        {"2026-03-04T09:41:00", nullptr},
        {"2026-03-04T09:41:00.Z", nullptr},
        {"2026-03-04T09:41:00+2:00", nullptr},
        {"2026-03-04T09:41:00+24:00", nullptr},
        {"2026-03-04T09:41:00Z ", nullptr},
        {"+026-03-04T09:41:00Z", nullptr},
        {"2026-03-04", nullptr},
        {"", nullptr},
    };
    for (const auto& [text, moment] : cases) {
        const auto date = parseRfc3339(text);
        EXPECT_EQ(date ? formatRfc3339(*date) : "refused", moment ? moment : "refused") << text;
    }
}

TEST(Rfc3339, WritesWhatItReadBackToTheMillisecond) {
    for (int i = 0; i < 1000; ++i) {
        std::string text = "2026-03-04T23:59:59.000Z";
        const std::string digits = std::to_string(1000 + i).substr(1);
        text.replace(20, 3, digits);
        EXPECT_EQ(formatRfc3339(parseRfc3339(text).value()), text);
    }
    EXPECT_EQ(formatRfc3339(parseRfc3339("2026-12-31T23:59:59.9996Z").value()), "2027-01-01T00:00:00.000Z");
}

}  // namespace
}  // namespace platform
