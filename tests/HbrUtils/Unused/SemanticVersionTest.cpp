#include <HbrUtils/Unused/BundleVersion.h>
#include <HbrUtils/Unused/SemanticVersion.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;

TEST(SemanticVersion, ReadsOneToThreeWholeNumbers) {
    const std::vector<std::pair<std::string, std::optional<SemanticVersion>>> cases = {
        {"2", SemanticVersion{2, 0, 0}},
        {"2.1", SemanticVersion{2, 1, 0}},
        {"2.1.3", SemanticVersion{2, 1, 3}},
        {".1..2.", SemanticVersion{1, 2, 0}},
        {"+1.-2", SemanticVersion{1, -2, 0}},
        {"2.1.3.4", std::nullopt},
        {"2.x", std::nullopt},
        {"v2", std::nullopt},
        {"", std::nullopt},
        {"...", std::nullopt},
        {"1. 2", std::nullopt},
        {"+-1", std::nullopt},
        {"99999999999999999999", std::nullopt}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(SemanticVersion::parse(text), expected) << text;
}

TEST(SemanticVersion, ComparesFromTheMajorNumberDown) {
    const SemanticVersion version{2, 1, 5};
    EXPECT_TRUE(version.isNewerThan({2, 0, 9}) && version.isNewerThan({2, 1, 0}));
    EXPECT_FALSE(version.isNewerThan(version) || version.isNewerMajorOrMinorThan({2, 1, 0}));
    EXPECT_TRUE(version.isNewerMajorOrMinorThan({1, 9, 9}));
}

TEST(BundleVersion, TheProgramsOwnBundleKnowsItsVersion) {
    const test::TestEnvironment world;
    const auto bundle = platform::Bundle::main(*world.ref());
    ASSERT_TRUE(shortVersionString(bundle));
    EXPECT_TRUE(SemanticVersion::parse(*shortVersionString(bundle)));
    EXPECT_TRUE(bundleVersionString(bundle));
}

TEST(BundleVersion, OnlyATextIsValid) {
    const test::TemporaryDirectory folder;
    folder.write(
        "Info.plist",
        R"(<plist version="1.0"><dict><key>CFBundleVersion</key><integer>7</integer></dict></plist>)");
    EXPECT_EQ(bundleVersionString(platform::Bundle(folder.path())), std::nullopt);
    EXPECT_EQ(shortVersionString(platform::Bundle(folder.path())), std::nullopt);
    EXPECT_EQ(bundleVersionString(platform::Bundle(folder / "missing")), std::nullopt);
}

}  // namespace
