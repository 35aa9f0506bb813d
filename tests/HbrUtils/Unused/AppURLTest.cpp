#include <HbrUtils/Unused/AppURL.h>

#include <gtest/gtest.h>
#include <support/RecordingWorkspace.h>

namespace {

using namespace hbr;

TEST(OpenURL, ComposesMailWithEncodedTexts) {
    test::RecordingWorkspace workspace;
    EXPECT_EQ(openMailAppWithComposeWindow("ann@example.org", "Late by 5%", "Sorry,\nann ü", workspace),
              std::nullopt);
    EXPECT_EQ(workspace.opened,
              std::vector<std::string>{
                  "mailto:ann@example.org?subject=Late%20by%205%25&body=Sorry,%0Aann%20%C3%BC"});
}

TEST(OpenURL, APlaceOutsideIsStoredAsItsAddress) {
    test::RecordingWorkspace workspace;
    EXPECT_EQ(openAppURL(AppURL::website, workspace), std::nullopt);
    EXPECT_EQ(fromRawValue<AppURL>(workspace.opened.back()), AppURL::website);
    EXPECT_EQ(fromRawValue<AppURL>("https://example.org"), std::nullopt);
}

}  // namespace
