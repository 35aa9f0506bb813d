#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace {

using hbr::VideoConferenceLinkParser;
using hbr::VideoConferenceService;

/// Link as people send it, identifier of the service that takes it ("" for none).
using Case = std::pair<std::string, std::string>;

class ConferenceServices : public testing::Test {
  protected:
    void expectServices(const std::vector<Case>& cases) {
        for (const auto& [text, service] : cases) {
            const auto links = parser_.parse(text);
            EXPECT_EQ(links.empty() ? "" : links[0].service.id, service) << text;
            if (!links.empty()) {
                EXPECT_EQ(links[0].url.absoluteString(), text);
            }
        }
    }

    test::TestEnvironment world_;
    VideoConferenceLinkParser parser_{world_.ref()};
};

TEST_F(ConferenceServices, BuiltInServicesTakeTheirLinks) {
    expectServices(
        {{"https://hangouts.google.com/call/abc", "googleHangouts"},
         {"https://meet.google.com/abc-defg-hij", "googleMeet"},
         {"HTTPS://MEET.GOOGLE.COM/ABC-DEFG-HIJ", "googleMeet"},
         {"http://meet.google.com/_meet/abc-defg-hij?authuser=0", "googleMeet"},
         {"https://meet.google.com/", ""},
         {"https://zoom.us/j/123456789", "zoom"},
         {"https://us02web.zoom.us/j/81234567890?pwd=aB%2Bc.1", "zoom"},
         {"https://acme.zoom.us/my/ann", "zoom"},
         {"https://zoom.com.cn/w/123", "zoom"},
         {"https://zoom.us/pricing", ""},
         {"https://example.org/?to=https://zoom.us/j/1", "zoom"},
         {"zoommtg://us02web.zoom.us/join?confno=1", "zoomNative"},
         {"zoommtg://zoom.com.cn/join?confno=1", "zoomNative"},
         {"https://acme.webex.com/meet/ann.doe", "webex"},
         {"https://acme.webex.com/acme/j.php?MTID=m0123", "webexWebinar"},
         {"https://acme.webex.com/help", ""},
         {"https://teams.microsoft.com/l/meetup-join/19%3ameeting_Abc%40thread.v2/0?context=%7b%22Tid%22%7d",
          "microsoftTeams"},
         {"https://teams.microsoft.com/meetingOptions/?organizerId=1", ""},
         {"https://global.gotomeeting.com/join/123456789", "goTo"},
         {"https://register.gotowebinar.com/register/123", "goToWbinar"},
         {"https://bluejeans.com/123456789/1234", "bluejeans"},
         {"https://join.me/acme", "joinMe"},
         {"https://whereby.com/standup", "whereby"},
         {"https://v.ringcentral.com/join/123456789", "ringCentral"},
         {"https://chime.aws/1234567890", "amazonChime"},
         {"https://facetime.apple.com/join#v=1&p=abc&k=def", "faceTime"},
         {"http://facetime.apple.com/join#v=1", ""},
         {"https://meet.jit.si/Standup", "jitsi"},
         {"https://ann.youcanbook.me/zoom/abc", "youcanbookme"},
         {"https://joinentre.com/room/abc", "entre"},
         {"https://riverside.fm/studio/acme", "riverside"},
         {"https://app.slack.com/huddle/T01/C02", "slackHuddle"},
         {"https://acme.workplace.com/groupcall/abc", "facebookWorkspace"},
         {"https://join.skype.com/abc", "skype"},
         {"https://around.co/r/abc", "around"},
         {"ts3server://voice.example.org?port=9987", "teamSpeak"},
         {"https://doxy.me/dr.ann", "doxyMe"},
         {"zoom.us/j/123456789", ""},
         {"https://example.org/meeting", ""}});
}

TEST_F(ConferenceServices, ShippedServicesTakeTheirLinks) {
    expectServices(
        {{"https://teams.microsoft.com/meet/2315551234567?p=AbCdEf", "microsoftTeamsMeet"},
         {"https://teams.live.com/meet/9412345678?p=x", "microsoftTeamsMeet"},
         {"https://gov.teams.microsoft.us/l/meetup-join/19%3ameeting_x%40thread.v2/0", "microsoftTeamsMeet"},
         {"https://acme.zoomgov.com/j/1601234567?pwd=x", "zoomGov"},
         {"https://us02web.zoom.us/wc/join/81234567890", "zoomMore"},
         {"https://zoom.com/j/81234567890", "zoomMore"},
         {"https://us06web.zoom.us/meeting/register/tZ0abc", "zoomMore"},
         {"https://events.zoom.us/ejl/Ab12Cd34", "zoomEvents"},
         {"https://acme.webex.com/wbxmjs/joinservice/sites/acme/meeting/download/0123", "webexMeeting"},
         {"https://acme.webex.com/weblink/register/r0123", "webexMeeting"},
         {"https://meet.goto.com/123456789", "goToMeet"},
         {"https://gotomeet.me/ann", "goToMeet"},
         {"https://acme.whereby.com/standup", "wherebyTeam"},
         {"https://meet.around.co/r/abc", "aroundMeet"},
         {"https://clinic.doxy.me/dr.ann", "doxyMeClinic"},
         {"https://acme.slack.com/call/R0123", "slackCall"},
         {"https://meet.lync.com/acme/ann/ABC12345", "skypeForBusiness"},
         {"https://8x8.vc/acme/standup", "eightByEight"},
         {"https://moderated.jitsi.net/abc", "jitsiMoved"},
         {"https://kmeet.infomaniak.com/abcdefgh", "kMeet"},
         {"https://talk.brave.com/Zs0rFq4", "braveTalk"},
         {"https://meet.proton.me/join/id-ABC123", "protonMeet"},
         {"https://discord.gg/abc123", "discord"},
         {"https://discord.com/channels/1/2", "discord"},
         {"https://app.gather.town/app/abc/office", "gather"},
         {"https://acme.daily.co/standup", "daily"},
         {"https://app.cal.com/video/abc123", "calVideo"},
         {"https://calendly.com/events/0a1b2c/google_meet", "calendly"},
         {"https://meet.zoho.eu/abcd-efg-hij", "zohoMeeting"},
         {"https://meeting.zoho.com/meeting/join?key=123", "zohoMeeting"},
         {"https://meeting.tencent.com/dm/AbCdEf123", "tencentMeeting"},
         {"https://vc.feishu.cn/j/123456789", "lark"},
         {"https://vc.larksuite.com/j/123456789", "lark"},
         {"https://meeting.dingtalk.com/j/AbC123", "dingTalk"},
         {"https://meeting.huaweicloud.com/#/j/123456789", "huaweiMeeting"},
         {"https://meetings.dialpad.com/ann", "dialpad"},
         {"https://meetings.vonage.com/123456789", "vonage"},
         {"https://call.lifesizecloud.com/1234567", "lifesize"},
         {"https://acme.onpexip.com/webapp/#/?conference=ann", "pexip"},
         {"https://acme.adobeconnect.com/r0123/", "adobeConnect"},
         {"https://join.freeconferencecall.com/ann", "freeConferenceCall"},
         {"https://acme.clickmeeting.com/webinar", "clickMeeting"},
         {"https://app.livestorm.co/p/0a1b2c/live", "livestorm"},
         {"https://event.demio.com/ref/abc", "demio"},
         {"https://www.bigmarker.com/acme/webinar", "bigMarker"},
         {"https://event.on24.com/wcc/r/123/ABC", "on24"},
         {"https://hopin.com/events/acme-day", "hopin"},
         {"https://www.airmeet.com/e/0a1b2c", "airmeet"},
         {"https://live.remo.co/e/acme", "remo"},
         {"https://app.butter.us/acme/room", "butter"},
         {"https://streamyard.com/abc123def", "streamYard"},
         {"https://vdo.ninja/?room=acme", "vdoNinja"},
         {"https://call.element.io/room/#/standup?roomId=x", "elementCall"},
         {"https://call.whatsapp.com/video/AbC123", "whatsAppCall"},
         {"https://signal.link/call/#key=abc", "signalCall"},
         {"https://msngr.com/abc123", "messengerCall"},
         {"https://t.me/call/abc123", "telegramCall"},
         {"https://t.me/acme?livestream=1", "telegramCall"},
         {"https://bbb.example.org/b/ann-abc-def-123", "bigBlueButton"},
         {"https://bbb.example.org/rooms/abc-def-ghi-jkl/join", "bigBlueButton"},
         {"https://cloud.example.org/index.php/call/ab3cd9ef", "nextcloudTalk"},
         {"https://example.org:8443/cloud/index.php/call/ab3cd9ef", "nextcloudTalk"},
         {"https://cloud.example.org/call/ab3cd9ef", "nextcloudTalk"},
         {"https://conf.dfn.de/webapp/conference/979123456", "dfnConf"},
         {"https://visio.numerique.gouv.fr/abc-defg-hij", "visioGouv"},
         {"https://go.teamviewer.com/m12345678", "teamViewer"},
         {"https://tuple.app/c/V1StGXR8", "tuple"},
         {"https://app.kumospace.com/acme", "kumospace"},
         {"https://app.spatial.chat/s/acme", "spatialChat"},
         {"https://ro.am/acme/lobby", "roam"},
         {"https://app.eyeson.team/?guest=abc", "eyeson"},
         {"https://meet.opentalk.eu/room/0a1b2c", "openTalk"},
         {"https://meet.livekit.io/rooms/abc", "liveKit"},
         {"https://www.youtube.com/live/abc123", "youTubeLive"},
         {"https://vimeo.com/event/123456", "vimeoEvent"},
         {"https://stream.meet.google.com/stream/0a1b2c", "googleMeetStream"},
         {"https://g.co/meet/acme", "googleMeetShort"},
         {"facetime:ann@example.org", "faceTimeLegacy"},
         {"mumble://voice.example.org/", "mumble"}});
}

TEST_F(ConferenceServices, ShippedServicesPassOverPagesThatAreNoCalls) {
    expectServices({{"https://meet.goto.com/install", ""},
                    {"https://8x8.vc/static/dialin.html", ""},
                    {"https://discord.com/download", ""},
                    {"https://github.com/acme/issues/12", ""},
                    {"https://bbb.example.org/b/pictures", ""},
                    {"https://cloud.example.org/call/standup-notes", ""},
                    {"https://www.youtube.com/watch?v=abc", ""},
                    {"https://zoom.us/u/abcd", ""},
                    {"https://t.me/ann", ""},
                    {"https://help.webex.com/article/join", ""},
                    {"mailto:ann@example.org", ""}});
}

TEST_F(ConferenceServices, NoLinkMadeForItSwitchesAShippedServiceOff) {
    for (const std::string piece : {"https://acme.webex.com/", "https://t.me/", "https://a/call/", "opentalk",
                                    "https://opentalk.", "https://a/b/abc-", "https://acme.zoom.us/j",
                                    "https://gather.town/", "facetime:", "https://8x8.vc/"}) {
        for (std::size_t size = 3000; size < 3005; ++size) {
            std::string text = "https://example.org/";
            while (text.size() < size)
                text += piece;
            parser_.parse(text + std::to_string(size));
            parser_.parse(text.substr(20) + std::to_string(size));
        }
    }
    EXPECT_TRUE(world_.diagnostics->all().empty()) << world_.diagnostics->all().front().text;
}

TEST_F(ConferenceServices, EveryServiceOfTheListIsNamedAndKnownOnce) {
    std::set<std::string> identifiers;
    for (const auto& service : parser_.services()) {
        EXPECT_TRUE(identifiers.insert(service.id).second) << service.id;
        EXPECT_FALSE(service.name.empty()) << service.id;
    }
    EXPECT_EQ(VideoConferenceService::all().size(), 25U);
    EXPECT_GE(parser_.services().size(), 25U + 30U);
    EXPECT_TRUE(std::equal(VideoConferenceService::all().begin(), VideoConferenceService::all().end(),
                           parser_.services().begin()));
    EXPECT_TRUE(world_.diagnostics->all().empty());
}

TEST(VideoConferenceService, LooksAtTheTargetOfASafeLink) {
    const auto wrapped = [](const std::string& query) {
        return platform::Url::parse("https://eur01.safelinks.protection.outlook.com/" + query).value();
    };
    const auto& zoom = VideoConferenceService::zoom();
    EXPECT_TRUE(zoom.matches(wrapped("?url=https%3A%2F%2Fzoom.us%2Fj%2F123&data=x")));
    EXPECT_FALSE(zoom.matches(wrapped("?url=https%3A%2F%2Fexample.org&x=https://zoom.us/j/1")));
    EXPECT_TRUE(zoom.matches(wrapped("?data=https://zoom.us/j/1")));
    EXPECT_FALSE(zoom.matches(wrapped("")));
}

TEST(VideoConferenceService, APatternThatDoesNotCompileNeverMatches) {
    const VideoConferenceService service{"x", "https://(", "X", false};
    EXPECT_FALSE(
        service.matches(platform::Url::parse("https://(").value_or(*platform::Url::parse("https://a"))));
}

}  // namespace
