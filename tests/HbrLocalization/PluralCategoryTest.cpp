#include <HbrLocalization/PluralCategory.h>
#include <gtest/gtest.h>

namespace hbr {
namespace {

TEST(PluralCategory, FollowsTheRulesOfTheLanguage) {
    const struct {
        std::string_view language;
        std::int64_t count;
        std::string_view category;
    } cases[] = {
        {"en", 0, "other"},
        {"en", 1, "one"},
        {"en", 2, "other"},
        {"he", 2, "two"},
        {"pl", 3, "few"},
        {"pl", 5, "many"},
        {"ja", 1, "other"},
        {"ar", 0, "zero"},
        {"nonsense", 1, "other"},
        {"he", 1, "one"},
        {"he", 3, "other"},
        {"en", -1, "one"},
        {"ar", 3'000'000'000, "other"},
        {"ru", 4'000'000'021, "one"},
    };
    for (const auto& one : cases) {
        EXPECT_EQ(pluralCategory(one.language, one.count), one.category) << one.language << " " << one.count;
    }
}

}  // namespace
}  // namespace hbr
