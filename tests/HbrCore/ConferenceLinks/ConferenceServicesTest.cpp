#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <TimeAndText/Text.h>
#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

using hbr::VideoConferenceLinkParser;
using hbr::VideoConferenceService;

class ConferenceServices : public testing::Test {
  protected:
    /// "SERVICE: LINK LINK …", links as people send them; those of "nobody" have no service.
    void expectServices(std::string_view text) {
        std::string service;
        for (const auto& word : platform::words(text)) {
            if (word.ends_with(':')) {
                service = word.substr(0, word.size() - 1);
                continue;
            }
            const auto links = parser_.parse(word);
            EXPECT_EQ(links.empty() ? "nobody" : links[0].service.id, service) << word;
            EXPECT_EQ(links.empty() ? word : links[0].url.absoluteString(), word);
        }
    }

    test::TestEnvironment world_;
    VideoConferenceLinkParser parser_{world_.ref()};
};

TEST_F(ConferenceServices, BuiltInServicesTakeTheirLinks) {
    expectServices(R"(
        googleHangouts: https://hangouts.google.com/call/abc
        googleMeet: https://meet.google.com/abc-defg-hij HTTPS://MEET.GOOGLE.COM/ABC-DEFG-HIJ
            http://meet.google.com/_meet/abc-defg-hij?authuser=0
        zoom: https://zoom.us/j/123456789 https://us02web.zoom.us/j/81234567890?pwd=aB%2Bc.1
            https://acme.zoom.us/my/ann https://zoom.com.cn/w/123
            https://example.org/?to=https://zoom.us/j/1
        zoomNative: zoommtg://us02web.zoom.us/join?confno=1 zoommtg://zoom.com.cn/join?confno=1
        webex: https://acme.webex.com/meet/ann.doe
        webexWebinar: https://acme.webex.com/acme/j.php?MTID=m0123
        microsoftTeams:
            https://teams.microsoft.com/l/meetup-join/19%3ameeting_Abc%40thread.v2/0?context=%7b%22Tid%22%7d
        goTo: https://global.gotomeeting.com/join/123456789
        goToWbinar: https://register.gotowebinar.com/register/123
        bluejeans: https://bluejeans.com/123456789/1234 joinMe: https://join.me/acme
        whereby: https://whereby.com/standup ringCentral: https://v.ringcentral.com/join/123456789
        amazonChime: https://chime.aws/1234567890
        faceTime: https://facetime.apple.com/join#v=1&p=abc&k=def jitsi: https://meet.jit.si/Standup
        youcanbookme: https://ann.youcanbook.me/zoom/abc entre: https://joinentre.com/room/abc
        riverside: https://riverside.fm/studio/acme slackHuddle: https://app.slack.com/huddle/T01/C02
        facebookWorkspace: https://acme.workplace.com/groupcall/abc skype: https://join.skype.com/abc
        around: https://around.co/r/abc teamSpeak: ts3server://voice.example.org?port=9987
        doxyMe: https://doxy.me/dr.ann
        nobody: https://meet.google.com/ https://zoom.us/pricing https://acme.webex.com/help
            https://teams.microsoft.com/meetingOptions/?organizerId=1 http://facetime.apple.com/join#v=1
            zoom.us/j/123456789 https://example.org/meeting)");
}

TEST_F(ConferenceServices, ShippedServicesTakeTheirLinksAndNoOtherPages) {
    expectServices(R"(
        microsoftTeamsMeet: https://teams.microsoft.com/meet/2315551234567?p=AbCdEf
            https://teams.live.com/meet/9412345678?p=x
            https://gov.teams.microsoft.us/l/meetup-join/19%3ameeting_x%40thread.v2/0
        zoomGov: https://acme.zoomgov.com/j/1601234567?pwd=x
        zoomMore: https://us02web.zoom.us/wc/join/81234567890 https://zoom.com/j/81234567890
            https://us06web.zoom.us/meeting/register/tZ0abc
        zoomEvents: https://events.zoom.us/ejl/Ab12Cd34
        webexMeeting: https://acme.webex.com/wbxmjs/joinservice/sites/acme/meeting/download/0123
            https://acme.webex.com/weblink/register/r0123
        goToMeet: https://meet.goto.com/123456789 https://gotomeet.me/ann
        wherebyTeam: https://acme.whereby.com/standup aroundMeet: https://meet.around.co/r/abc
        doxyMeClinic: https://clinic.doxy.me/dr.ann slackCall: https://acme.slack.com/call/R0123
        skypeForBusiness: https://meet.lync.com/acme/ann/ABC12345
        eightByEight: https://8x8.vc/acme/standup jitsiMoved: https://moderated.jitsi.net/abc
        kMeet: https://kmeet.infomaniak.com/abcdefgh braveTalk: https://talk.brave.com/Zs0rFq4
        protonMeet: https://meet.proton.me/join/id-ABC123
        discord: https://discord.gg/abc123 https://discord.com/channels/1/2
        gather: https://app.gather.town/app/abc/office daily: https://acme.daily.co/standup
        calVideo: https://app.cal.com/video/abc123
        calendly: https://calendly.com/events/0a1b2c/google_meet
        zohoMeeting: https://meet.zoho.eu/abcd-efg-hij https://meeting.zoho.com/meeting/join?key=123
        tencentMeeting: https://meeting.tencent.com/dm/AbCdEf123
        lark: https://vc.feishu.cn/j/123456789 https://vc.larksuite.com/j/123456789
        dingTalk: https://meeting.dingtalk.com/j/AbC123
        huaweiMeeting: https://meeting.huaweicloud.com/#/j/123456789
        dialpad: https://meetings.dialpad.com/ann vonage: https://meetings.vonage.com/123456789
        lifesize: https://call.lifesizecloud.com/1234567
        pexip: https://acme.onpexip.com/webapp/#/?conference=ann
        adobeConnect: https://acme.adobeconnect.com/r0123/
        freeConferenceCall: https://join.freeconferencecall.com/ann
        clickMeeting: https://acme.clickmeeting.com/webinar
        livestorm: https://app.livestorm.co/p/0a1b2c/live demio: https://event.demio.com/ref/abc
        bigMarker: https://www.bigmarker.com/acme/webinar on24: https://event.on24.com/wcc/r/123/ABC
        hopin: https://hopin.com/events/acme-day airmeet: https://www.airmeet.com/e/0a1b2c
        remo: https://live.remo.co/e/acme butter: https://app.butter.us/acme/room
        streamYard: https://streamyard.com/abc123def vdoNinja: https://vdo.ninja/?room=acme
        elementCall: https://call.element.io/room/#/standup?roomId=x
        whatsAppCall: https://call.whatsapp.com/video/AbC123 signalCall: https://signal.link/call/#key=abc
        messengerCall: https://msngr.com/abc123
        telegramCall: https://t.me/call/abc123 https://t.me/acme?livestream=1
        bigBlueButton: https://bbb.example.org/b/ann-abc-def-123
            https://bbb.example.org/rooms/abc-def-ghi-jkl/join
        nextcloudTalk: https://cloud.example.org/index.php/call/ab3cd9ef
            https://example.org:8443/cloud/index.php/call/ab3cd9ef https://cloud.example.org/call/ab3cd9ef
        dfnConf: https://conf.dfn.de/webapp/conference/979123456
        visioGouv: https://visio.numerique.gouv.fr/abc-defg-hij
        teamViewer: https://go.teamviewer.com/m12345678 tuple: https://tuple.app/c/V1StGXR8
        kumospace: https://app.kumospace.com/acme spatialChat: https://app.spatial.chat/s/acme
        roam: https://ro.am/acme/lobby eyeson: https://app.eyeson.team/?guest=abc
        openTalk: https://meet.opentalk.eu/room/0a1b2c liveKit: https://meet.livekit.io/rooms/abc
        youTubeLive: https://www.youtube.com/live/abc123 vimeoEvent: https://vimeo.com/event/123456
        googleMeetStream: https://stream.meet.google.com/stream/0a1b2c
        googleMeetShort: https://g.co/meet/acme faceTimeLegacy: facetime:ann@example.org
        mumble: mumble://voice.example.org/
        nobody: https://meet.goto.com/install https://8x8.vc/static/dialin.html
            https://discord.com/download https://github.com/acme/issues/12
            https://bbb.example.org/b/pictures https://cloud.example.org/call/standup-notes
            https://www.youtube.com/watch?v=abc https://zoom.us/u/abcd https://t.me/ann
            https://help.webex.com/article/join mailto:ann@example.org)");
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
