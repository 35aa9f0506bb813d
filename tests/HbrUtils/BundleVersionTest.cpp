#include <HbrUtils/BundleVersion.h>
#include <HbrUtils/SemanticVersion.h>
#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(BundleVersion, TheProgramsOwnBundleKnowsItsVersion) {
    const test::TestEnvironment world;
    const auto bundle = platform::Bundle::main(*world.ref());
    ASSERT_TRUE(shortVersionString(bundle));
    EXPECT_TRUE(SemanticVersion::parse(*shortVersionString(bundle)));
    EXPECT_TRUE(bundleVersionString(bundle));
}

TEST(BundleVersion, OnlyATextCounts) {
    const test::TemporaryDirectory folder;
    folder.write(
        "Info.plist",
        R"(<plist version="1.0"><dict><key>CFBundleVersion</key><integer>7</integer></dict></plist>)");
    EXPECT_EQ(bundleVersionString(platform::Bundle(folder.path())), std::nullopt);
    EXPECT_EQ(shortVersionString(platform::Bundle(folder.path())), std::nullopt);
    EXPECT_EQ(bundleVersionString(platform::Bundle(folder / "missing")), std::nullopt);
}

}  // namespace
