#include <HbrUtils/Unused/AppURL.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

struct RecordingWorkspace final : platform::Workspace {
    std::optional<std::string> open(const platform::Url& url) override {
        opened.push_back(url.absoluteString());
        return std::nullopt;
    }
    std::optional<std::string> programForScheme(std::string_view) const override { return std::nullopt; }
    std::optional<std::string> programForContentType(std::string_view) const override { return std::nullopt; }
    std::optional<std::string> startProgramForContentType(std::string_view) override { return std::nullopt; }
    std::vector<std::string> opened;
};

TEST(OpenURL, ComposesMailWithEncodedTexts) {
    RecordingWorkspace workspace;
    EXPECT_EQ(openMailAppWithComposeWindow("ann@example.org", "Late by 5%", "Sorry,\nann ü", workspace),
              std::nullopt);
    EXPECT_EQ(workspace.opened,
              std::vector<std::string>{
                  "mailto:ann@example.org?subject=Late%20by%205%25&body=Sorry,%0Aann%20%C3%BC"});
}

TEST(OpenURL, EveryPlaceOutsideIsAnAddressOfItsOwn) {
    RecordingWorkspace workspace;
    for (const auto place :
         {AppURL::writeAppStoreReview, AppURL::sendSupportMail, AppURL::help, AppURL::website,
          AppURL::tutorialVideo, AppURL::privacyPolicy, AppURL::termsOfUse}) {
        EXPECT_EQ(openAppURL(place, workspace), std::nullopt);
        EXPECT_EQ(workspace.opened.back(), rawValue(place));
        EXPECT_EQ(fromRawValue<AppURL>(rawValue(place)), place);
    }
    EXPECT_EQ(fromRawValue<AppURL>("https://example.org"), std::nullopt);
}

}  // namespace
