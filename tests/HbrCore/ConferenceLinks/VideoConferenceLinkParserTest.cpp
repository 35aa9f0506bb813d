#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>
#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

namespace {

using namespace hbr;

platform::Url url(std::string_view text) {
    return platform::Url::parse(text).value();
}

const std::string safeLink =
    "https://eur01.safelinks.protection.outlook.com/"
    "?url=https%3A%2F%2Fteams.microsoft.com%2Fl%2Fmeetup-join%2F19%253ameeting%2F0&data=05%7C01";

class Parser : public testing::Test {
  protected:
    std::vector<std::string> found(std::string_view text) {
        std::vector<std::string> result;
        for (const auto& link : parser_.parse(text))
            result.push_back(link.service.id + " " + link.url.absoluteString());
        return result;
    }

    test::TestEnvironment world_;
    VideoConferenceLinkParser parser_{world_.ref()};
};

TEST_F(Parser, FindsEachLinkOnceInTheOrderOfTheText) {
    using Links = std::vector<std::string>;
    const std::vector<std::pair<std::string, Links>> cases = {
        {"", {}},
        {"no call today, see https://example.org", {}},
        {"https://zoom.us/j/2 https://meet.google.com/abc, https://zoom.us/j/1 and again https://zoom.us/j/2",
         {"zoom https://zoom.us/j/2", "googleMeet https://meet.google.com/abc", "zoom https://zoom.us/j/1"}},
        {"<a href=\"https://zoom.us/j/1\">https://zoom.us/j/1</a>", {"zoom https://zoom.us/j/1"}},
        {"https://www.google.com/url?q=https%3A%2F%2Fmeet.google.com%2Fabc-defg-hij&sa=D",
         {"googleMeet https://meet.google.com/abc-defg-hij"}},
        {"https://www.google.de/url?q=https%253A%252F%252Fmeet.google.com%252Fabc",
         {"googleMeet https://meet.google.com/abc"}},
        {"https://www.google.com/url?sa=D&q=https://meet.google.com/abc",
         {"googleMeet https://www.google.com/url?sa=D&q=https://meet.google.com/abc"}},
        {"https://www.google.com/url?q=https://zoom.us/j/1 https://zoom.us/j/1",
         {"zoom https://zoom.us/j/1"}},
        {"Join <" + safeLink + ">", {"microsoftTeams " + safeLink}},
        {"会议：https://zoom.us/j/123，密码 1", {"zoom https://zoom.us/j/123"}},
    };
    for (const auto& [text, links] : cases) {
        EXPECT_EQ(found(text), links) << text;
        EXPECT_EQ(found(text), links) << "again: " << text;
    }
}

TEST_F(Parser, AnswersManyThreadsAlike) {
    std::vector<std::jthread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this] {
            for (int i = 0; i < 300; ++i) {
                const auto text = "https://zoom.us/j/" + std::to_string(i % 50);
                const auto links = parser_.parse(text);
                ASSERT_EQ(links.size(), 1U);
                ASSERT_EQ(links[0].url.absoluteString(), text);
            }
        });
    }
}

TEST_F(Parser, NativeUrlsOfZoomAndTeams) {
    const auto native = [&](const VideoConferenceService& service, std::string_view text) {
        const auto result = parser_.nativeUrl({service, url(text)});
        return result ? result->absoluteString() : "none";
    };
    const auto& zoom = VideoConferenceService::zoom();
    const auto& teams = VideoConferenceService::microsoftTeams();
    EXPECT_EQ(native(zoom, "https://us02web.zoom.us/j/123456789?pwd=abc"),
              "zoommtg://us02web.zoom.us/join?confno=123456789&pwd=abc");
    EXPECT_EQ(native(zoom, "https://zoom.us/j/123"), "zoommtg://zoom.us/join?confno=123");
    EXPECT_EQ(native(zoom, "https://zoom.us/my/ann/?pwd=a%2Bb"), "zoommtg://zoom.us/join?confno=ann&pwd=a+b");
    EXPECT_EQ(native(zoom, "zoom:123"), "none");
    EXPECT_EQ(native(teams, "https://teams.microsoft.com/l/meetup-join/19%3a/0?x=1"),
              "msteams:/l/meetup-join/19%3a/0?x=1");
    EXPECT_EQ(native(teams, safeLink), "msteams:/l/meetup-join/19%3ameeting/0");
    EXPECT_EQ(native(VideoConferenceService::zoomNative(), "zoommtg://zoom.us/join?confno=1"), "none");
}

TEST(VideoConferenceLink, LetsTheUserPickTheGoogleAccount) {
    const VideoConferenceLink plain{VideoConferenceService::googleMeet(), url("https://meet.google.com/abc")};
    EXPECT_TRUE(plain.isGoogle());
    EXPECT_EQ(plain.makeGoogleUrl(std::nullopt), plain.url);
    EXPECT_EQ(plain.makeGoogleUrl("ann@example.org").absoluteString(),
              "https://accounts.google.com/AccountChooser?Email=ann@example.org&continue=https://"
              "meet.google.com/abc");
    const VideoConferenceLink chooser{
        VideoConferenceService::googleMeet(),
        url("https://accounts.google.com/AccountChooser?continue=https://meet.google.com/abc")};
    EXPECT_EQ(chooser.makeGoogleUrl(std::nullopt), plain.url);
    EXPECT_EQ(chooser.makeGoogleUrl("a@b.org"), plain.makeGoogleUrl("a@b.org"));
    EXPECT_FALSE(VideoConferenceLink::demo().isGoogle());
    EXPECT_TRUE(VideoConferenceService::faceTime().matches(VideoConferenceLink::demo().url));
}

TEST(OutlookSafeLinks, UnwrapOnlyWhatCarriesAValidTarget) {
    const std::string host = "https://eur01.safelinks.protection.outlook.com/";
    EXPECT_EQ(unwrappedOutlookSafelinkUrl(
                  url(host + "?a=1&url=https%3A%2F%2Fa.example%2F%3Fb%3D1&url=https://c.example")),
              url("https://a.example/?b=1"));
    EXPECT_EQ(unwrappedOutlookSafelinkUrl(url(host + "?URL=https://a.example")), std::nullopt);
    EXPECT_EQ(unwrappedOutlookSafelinkUrl(url(host + "?url")), std::nullopt);
    EXPECT_EQ(unwrappedOutlookSafelinkUrl(
                  url("https://EUR01.SAFELINKS.protection.outlook.com/?url=https://a.example")),
              std::nullopt);
}

TEST(RemovingVideoCallAnnotation, TakesTheBlockOut) {
    const std::string block = "----( Video Call )----\nJoin: https://example.org\n---===---";
    const std::vector<std::pair<std::string, std::optional<std::string>>> cases = {
        {"notes", "notes"},
        {"", ""},
        {block, std::nullopt},
        {"before " + block, "before "},
        {"a" + block + "b" + block + "c", "abc"},
        {"a" + block + "\n---===---", "a\n---===---"},
        {"----( Video Call )----\nno end", "----( Video Call )----\nno end"},
        {"----( Video Call )---- no line break\n---===---",
         "----( Video Call )---- no line break\n---===---"},
    };
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(removingVideoCallAnnotation(text), expected) << text;
}

}  // namespace
