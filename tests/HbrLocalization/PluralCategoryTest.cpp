#include <HbrLocalization/PluralCategory.h>
#include <gtest/gtest.h>

namespace hbr {
namespace {

TEST(PluralCategory, FollowsTheRulesOfTheLanguage) {
    const std::tuple<std::string_view, std::int64_t, std::string_view> cases[] = {
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
        {"ru", 4'000'000'021, "one"}};
    for (const auto& [language, count, category] : cases) {
        EXPECT_EQ(pluralCategory(language, count), category) << language << " " << count;
    }
}

}  // namespace
}  // namespace hbr
