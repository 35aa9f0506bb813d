#include <HbrCore/ConferenceLinks/VideoCallAnnotation.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>

#include <HbrCore/ConferenceLinks/ConferenceServicesFile.h>
#include <HbrCore/ConferenceLinks/OutlookSafeLinks.h>
#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <Values/KeyedDecoder.h>
#include <Values/PropertyList.h>
#include <support/TestEnvironment.h>
#include <support/Threads.h>

#include <gtest/gtest.h>

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
        // HTML, in an attribute and in text.
        {"<a href=\"https://zoom.us/w/8?tk=AAA&amp;pwd=S\">https://zoom.us/w/8?tk=AAA&#38;pwd=S</a>",
         {"zoom https://zoom.us/w/8?tk=AAA&pwd=S"}},
        {"<p>https://zoom.us/w/8?tk&#x3D;AAA&#x26;pwd=S&#39;</p>", {"zoom https://zoom.us/w/8?tk=AAA&pwd=S"}},
        {"<b>https://meet.jit.si/Q&amp;A</b>", {"jitsi https://meet.jit.si/Q&A"}},
        {"<br/>https://www.google.com/url?sa=D&amp;q=https://zoom.us/j/1?a=1%26amp;pwd%3DS",
         {"zoom https://www.google.com/url?sa=D&q=https://zoom.us/j/1?a=1%26amp;pwd%3DS"}},
        {"https://www.google.com/url?q=https%3A%2F%2Fzoom.us%2Fj%2F1%3Fa%3D1%26amp%3Bpwd%3DS&amp;sa=D",
         {"zoom https://zoom.us/j/1?a=1&pwd=S"}},
        // Plain text: the query only.
        {"https://zoom.us/w/8?tk=AAA&amp;pwd=S, <https://meet.jit.si/Q&amp;A>",
         {"zoom https://zoom.us/w/8?tk=AAA&pwd=S", "jitsi https://meet.jit.si/Q&amp;A"}},
        {"https://zoom.us/w/8?tk=AAA&amp;amp;pwd=S", {"zoom https://zoom.us/w/8?tk=AAA&pwd=S"}},
        {"会议：https://zoom.us/j/123，密码 1", {"zoom https://zoom.us/j/123"}}};
    for (const auto& [text, links] : cases) {
        EXPECT_EQ(found(text), links) << text;
        EXPECT_EQ(found(text), links) << "again: " << text;
    }
}

TEST(ParserWithServicesOfTheUser, TakesTheFirstServiceWhosePatternMatches) {
    // Patterns of every construction, each on every URL, against a plain search in the order of the list.
    std::vector<std::string> patterns = platform::words(R"re(
        (?i)CALL\.EXAMPLE CALL\.EXAMPLE call\.exam(ple)?/x https?://one\.(a|b)\.org (two|2)\.example
        one|three\.example [\c]/]four.example [^]]five\.example x?si{0}x\.example seven+\.example
        (?:eight)*\.example$ \Qnine.\E? (?=ten)ten\. (?!ten)[a-z]+\.ten [[a-e]&&[d-z]]leven\. \u0074welve
        thirteen(?#note)\. ((((fourteen)))) fift{1,}een{2}?\. sixteen\.(example|test)/(a|bc)/x ü bücher
        %c3%bc a** ( .*/join/[0-9]{3})re");
    patterns.emplace_back();
    const auto texts = platform::words(R"(
        https://call.example/x https://CALL.EXAMPLE/X https://call.exam/x https://one.a.org
        https://2.example https://three.example https://four.example https://four-example.org/a
        https://x.five.example https://s.example/six.example https://sevennn.example https://seve.example
        https://a.example/eight.example https://nine.example https://ten.ten https://eleven.dleven.org
        https://twelve.org https://thirteen.org https://fourteen.org https://fiftttee.org/fifteenn.x
        https://sixteen.test/bc/x https://bücher.de https://example.org/join/123 mailto:ann@example.org
        https://zoom.us/j/1)");
    test::TestEnvironment world;
    std::vector<VideoConferenceService> services;
    for (std::size_t i = 0; i < patterns.size(); ++i)
        services.push_back({std::to_string(i), patterns[i], "S", false});
    // The empty pattern matches everything: each of the others is also tried alone.
    for (std::size_t left = 0; left < services.size(); ++left) {
        auto list = services;
        list.erase(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(left));
        world.home.write("data/heedbanner/ConferenceServices.plist",
                         platform::writeXmlPropertyList(encodeServices(list)));
        const VideoConferenceLinkParser parser(world.ref());
        for (const auto& text : texts) {
            const auto link = platform::Url::parse(text).value();
            std::string expected;
            for (const auto& service : parser.services()) {
                if (!service.matches(link)) continue;
                expected = service.id;
                break;
            }
            const auto links = parser.parse(text);
            EXPECT_EQ(links.empty() ? "" : links[0].service.id, expected)
                << text << " from pattern " << left << " on";
        }
    }
}

TEST(ParserWithServicesOfTheUser, APatternThatRunsAwayIsSwitchedOffAndReportedOnce) {
    test::TestEnvironment world;
    world.home.write(
        "data/heedbanner/ConferenceServices.plist",
        platform::writeXmlPropertyList(encodeServices(
            {{"bad", "call\\.example/(x+x+)+y", "Bad", false}, {"good", "call\\.example/", "Good", false}})));
    const VideoConferenceLinkParser parser(world.ref());
    const auto serviceOf = [&parser](const std::string& text) {
        const auto links = parser.parse(text);
        return links.empty() ? "" : links[0].service.id;
    };
    EXPECT_EQ(serviceOf("https://call.example/xxy"), "bad");
    for (std::size_t i = 0; i < 6; ++i)
        EXPECT_EQ(serviceOf("https://call.example/" + std::string(40 + i, 'x')), "good");
    EXPECT_EQ(serviceOf("https://call.example/xxxy"), "good");
    const auto said = world.diagnostics->all();
    ASSERT_EQ(said.size(), 1U);
    EXPECT_NE(said[0].text.find("\"bad\""), std::string::npos);
    EXPECT_EQ(said[0].file, world->dataDirectory / "ConferenceServices.plist");
}

TEST_F(Parser, AcceptsBytesThatAreNotText) {
    const std::string link = "https://zoom.us/j/1";
    for (const std::string& noise : {std::string("\0", 1), std::string("\xFF\xC3\x28\xED\xA0\x80"),
                                     std::string("\xF0\x9F"), std::string(5'000'000, '(')}) {
        const std::string text = noise + " " + link + noise;
        EXPECT_EQ(found(text), std::vector<std::string>{"zoom " + link});
    }
}

TEST_F(Parser, AnswersManyThreadsAlike) {
    test::onThreads(4, [this](int) {
        for (int i = 0; i < 300; ++i) {
            const auto link = "https://zoom.us/j/" + std::to_string(i % 50);
            ASSERT_EQ(found(link), std::vector{"zoom " + link});
        }
    });
}

TEST_F(Parser, NativeUrlsOfZoomAndTeams) {
    const auto& zoom = VideoConferenceService::zoom();
    const auto& teams = VideoConferenceService::microsoftTeams();
    const std::tuple<VideoConferenceService, std::string, const char*> cases[] = {
        {zoom, "https://us02web.zoom.us/j/123456789?pwd=abc",
         "zoommtg://us02web.zoom.us/join?confno=123456789&pwd=abc"},
        {zoom, "https://zoom.us/j/123", "zoommtg://zoom.us/join?confno=123"},
        {zoom, "https://zoom.us/my/ann/?pwd=a%2Bb", "zoommtg://zoom.us/join?confno=ann&pwd=a+b"},
        {zoom, "zoom:123", "none"},
        {teams, "https://teams.microsoft.com/l/meetup-join/19%3a/0?x=1",
         "msteams:/l/meetup-join/19%3a/0?x=1"},
        {teams, safeLink, "msteams:/l/meetup-join/19%3ameeting/0"},
        {VideoConferenceService::zoomNative(), "zoommtg://zoom.us/join?confno=1", "none"}};
    for (const auto& [service, page, native] : cases) {
        const auto result = parser_.nativeUrl({service, url(page)});
        EXPECT_EQ(result ? result->absoluteString() : "none", native) << page;
    }
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

TEST(VideoConferenceLink, IsStoredWithItsWholeService) {
    using Coding = JsonCoding<VideoConferenceLink>;
    const VideoConferenceLink link{VideoConferenceService::metaWorkplace(), url("https://a.example/x?y=1")};
    const auto json = Coding::encode(link);
    EXPECT_EQ(
        platform::writeJson(json),
        R"({"service":{"id":"facebookWorkspace","regex":"https?://([a-z0-9-.]+)?workplace\\.com/[^\\s]+",)"
        R"("name":"Meta Workplace ","supportsNativeApp":false},"url":"https://a.example/x?y=1"})");
    EXPECT_EQ(Coding::decode(json), link);
    EXPECT_EQ(std::hash<VideoConferenceLink>{}(Coding::decode(json)), std::hash<VideoConferenceLink>{}(link));
    for (const std::string_view broken :
         {R"({"url":"https://a.example"})",
          R"({"service":{"id":"a","regex":"b","name":"c"},"url":"https://a"})",
          R"({"service":{"id":"a","regex":"b","name":"c","supportsNativeApp":1},"url":"https://a"})",
          R"({"service":{"id":"a","regex":"b","name":"c","supportsNativeApp":true},"url":""})",
          R"({"service":{"id":"a","regex":"b","name":"c","supportsNativeApp":true}})"})
        EXPECT_THROW(Coding::decode(platform::parseJson(broken).value()), platform::DecodingError) << broken;
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
         "----( Video Call )---- no line break\n---===---"}};
    for (const auto& [text, expected] : cases)
        EXPECT_EQ(removingVideoCallAnnotation(text), expected) << text;
}

TEST_F(Parser, TextsWithTheSameChecksumHaveTheirOwnLinks) {
    const std::string meet = "https://meet.google.com/abc-defg-hij ref0tg0j0h";
    const std::string zoom = "Join: https://zoom.us/j/5551234567";
    ASSERT_EQ(platform::crc32(meet), platform::crc32(zoom));
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(found(meet), std::vector<std::string>{"googleMeet https://meet.google.com/abc-defg-hij"});
        EXPECT_EQ(found(zoom), std::vector<std::string>{"zoom https://zoom.us/j/5551234567"});
    }
}

}  // namespace
