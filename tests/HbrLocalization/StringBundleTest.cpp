#include <HbrLocalization/StringBundle.h>

#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

namespace {

TEST(StringBundle, PicksTheLanguageThatFitsThePreferredOnesBest) {
    test::TemporaryDirectory directory;
    for (const auto* language : {"en", "de", "he", "pt-PT", "zh-Hant"})
        directory.write(std::string("X.bundle/") + language + ".lproj/T.json", "{}");
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{"en-GB"}, "en"},    {{"de-AT", "en"}, "de"}, {{"gsw"}, "de"},
        {{"iw"}, "he"},       {{"nl", "de"}, "de"},    {{"nl"}, "en"},
        {{"pt-AO"}, "pt-PT"}, {{"zh-HK"}, "zh-Hant"},  {{"not a language"}, "en"},
        {{}, "en"},           {{"en", "de"}, "en"},
    };
    for (const auto& [languages, expected] : cases) {
        test::TestEnvironment world;
        world.change().locale.languages = languages;
        world.change().resourceDirectories = {directory.path()};
        const auto bundle = hbr::StringBundle::of(*world.ref(), "X.bundle");
        ASSERT_TRUE(bundle);
        EXPECT_EQ(bundle->language(), expected) << testing::PrintToString(languages);
    }
}

TEST(StringBundle, IsFoundOnlyAsAFolder) {
    test::TestEnvironment world;
    test::TemporaryDirectory directory;
    directory.write("X.bundle", "");
    world.change().resourceDirectories = {directory.path()};
    EXPECT_FALSE(hbr::StringBundle::of(*world.ref(), "X.bundle"));
    EXPECT_FALSE(hbr::StringBundle::of(*world.ref(), "Y.bundle"));
}

}  // namespace
