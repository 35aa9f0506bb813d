#include <HbrLocalization/PrintfFormat.h>

#include <gtest/gtest.h>

namespace {

TEST(PrintfFormat, PutsArgumentsIn) {
    struct Case {
        std::string format;
        std::vector<hbr::L10n::FormatArgument> arguments;
        std::string locale;
        std::string expected;
    };
    const std::vector<Case> cases = {
        {"plain", {}, "en_US", "plain"},
        {"100%%", {}, "en_US", "100%"},
        {"%%@ %@", {"a"}, "en_US", "%@ a"},
        {"%@ at %@.", {"a", "b"}, "en_US", "a at b."},
        {"%2$@ vor %1$@", {"a", "b"}, "de_DE", "b vor a"},
        {"%d of %i, %ld", {std::int64_t{1}, std::int64_t{-2}, std::int64_t{3}}, "en_US", "1 of -2, 3"},
        {"%d", {std::int64_t{42}}, "ar_EG", "٤٢"},
        {"%1$@: %2$lld", {"a", std::int64_t{7}}, "hi_IN@numbers=deva", "a: ७"},
        {"%@", {"50% %d %@"}, "en_US", "50% %d %@"},
        {"%@ %@", {"a"}, "en_US", "a %@"},
        {"%3$@ %0$@ %x %", {"a"}, "en_US", "%3$@ %0$@ %x %"},
        {"%99999999999999999999$@", {"a"}, "en_US", "%99999999999999999999$@"},
    };
    for (const auto& [format, arguments, locale, expected] : cases)
        EXPECT_EQ(hbr::formattedText(format, arguments, {locale, {"en"}}), expected) << format;
}

}  // namespace
