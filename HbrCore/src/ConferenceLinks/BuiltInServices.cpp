#include <HbrCore/ConferenceLinks/VideoConferenceService.h>

namespace hbr {

const VideoConferenceService& VideoConferenceService::googleHangouts() {
    static const VideoConferenceService service{"googleHangouts", R"(https?://hangouts.google.com/[^\s]*)",
                                                "Google Hangouts", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::googleMeet() {
    static const VideoConferenceService service{"googleMeet", R"(https?://meet.google.com/(_meet/)?[a-z-]+)",
                                                "Google Meet", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::zoom() {
    static const VideoConferenceService service{
        "zoom",
        R"(https?:\/\/(?:[a-zA-Z0-9-.]+)?zoom.(?:us|com.cn)\/(?:j|my|w)\/[-a-zA-Z0-9()@:%_\+.~#?&=\/]*)",
        "Zoom", true};
    return service;
}

const VideoConferenceService& VideoConferenceService::zoomNative() {
    static const VideoConferenceService service{
        "zoomNative", R"(zoommtg://([a-z0-9-.]+)?zoom\.(us|com\.cn)/join[-a-zA-Z0-9()@:%_\+.~#?&=\/]*)",
        "Zoom", true};
    return service;
}

const VideoConferenceService& VideoConferenceService::webex() {
    static const VideoConferenceService service{"webex", R"(https?://([a-z0-9-.]+)?webex\.com/meet/[^\s]*)",
                                                "Webex", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::webexWebinar() {
    static const VideoConferenceService service{
        "webexWebinar", R"(https?://([a-z0-9-.]+)?webex\.com/[^\s]*/j\.php\?)", "Webex Webinar", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::microsoftTeams() {
    static const VideoConferenceService service{
        "microsoftTeams", R"(https?://teams\.microsoft\.com/l/meetup-join/[a-zA-Z0-9_%\/=\-\+\.?]+)",
        "Microsoft Teams", true};
    return service;
}

const VideoConferenceService& VideoConferenceService::goTo() {
    static const VideoConferenceService service{"goTo", R"(https?://([a-z0-9.]+)?gotomeeting\.com/[^\s]*)",
                                                "GoToMeeting", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::goToWebinar() {
    static const VideoConferenceService service{
        "goToWbinar", R"(https?://([a-z0-9.]+)?gotowebinar\.com/[^\s]*)", "GoToWebinar", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::bluejeans() {
    static const VideoConferenceService service{"bluejeans", R"(https?://([a-z0-9.]+)?bluejeans\.com/[^\s]*)",
                                                "BlueJeans", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::joinMe() {
    static const VideoConferenceService service{"joinMe", R"(https?://join\.me/[^\s]*)", "join.me", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::whereby() {
    static const VideoConferenceService service{"whereby", R"(https?://whereby\.com/[^\s]*)", "Whereby",
                                                false};
    return service;
}

const VideoConferenceService& VideoConferenceService::ringCentral() {
    static const VideoConferenceService service{
        "ringCentral", R"(https?://([a-z0-9.]+)?ringcentral\.com/[^\s]*)", "RingCentral", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::amazonChime() {
    static const VideoConferenceService service{"amazonChime", R"(https?://([a-z0-9-.]+)?chime\.aws/[0-9]*)",
                                                "Amazon Chime", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::faceTime() {
    static const VideoConferenceService service{"faceTime", R"(https://facetime\.apple\.com/join[^\s]*)",
                                                "FaceTime", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::jitsi() {
    static const VideoConferenceService service{"jitsi", R"(https?://meet\.jit\.si/[^\s]*)", "Jitsi", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::youcanbookme() {
    static const VideoConferenceService service{
        "youcanbookme",
        R"(https?:\/\/(?:[a-zA-Z0-9-.]+)?youcanbook.me\/(?:zoom|google-meet|microsoft-teams)\/*)",
        "YouCanBook.me", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::entre() {
    static const VideoConferenceService service{"entre", R"(https?://joinentre.com/room/[^\s]*)", "Entre",
                                                false};
    return service;
}

const VideoConferenceService& VideoConferenceService::riverside() {
    static const VideoConferenceService service{"riverside", R"(https?://riverside.fm/studio/[^\s]*)",
                                                "Riverside", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::slackHuddle() {
    static const VideoConferenceService service{
        "slackHuddle", R"(https?://app.slack.com/huddle/[A-Za-z0-9./]+)", "Slack Huddle", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::metaWorkplace() {
    static const VideoConferenceService service{
        "facebookWorkspace", R"(https?://([a-z0-9-.]+)?workplace\.com/[^\s]+)", "Meta Workplace ", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::skype() {
    static const VideoConferenceService service{"skype", R"(https?://join\.skype\.com/[^\s]*)", "Skype",
                                                false};
    return service;
}

const VideoConferenceService& VideoConferenceService::around() {
    static const VideoConferenceService service{"around", R"(https?://around\.co/r/[^\s]*)", "Around", false};
    return service;
}

const VideoConferenceService& VideoConferenceService::teamSpeakNative() {
    static const VideoConferenceService service{"teamSpeak", R"(ts3server://*)", "TeamSpeak", true};
    return service;
}

const VideoConferenceService& VideoConferenceService::doxyMe() {
    static const VideoConferenceService service{"doxyMe", R"(https://doxy.me/[^\s]*)", "doxy.me", false};
    return service;
}

const std::vector<VideoConferenceService>& VideoConferenceService::all() {
    static const std::vector<VideoConferenceService> services{
        googleHangouts(), googleMeet(),     zoom(),        zoomNative(),      webex(),
        webexWebinar(),   microsoftTeams(), goTo(),        goToWebinar(),     bluejeans(),
        joinMe(),         whereby(),        ringCentral(), amazonChime(),     faceTime(),
        jitsi(),          youcanbookme(),   entre(),       riverside(),       slackHuddle(),
        metaWorkplace(),  skype(),          around(),      teamSpeakNative(), doxyMe()};
    return services;
}

const std::vector<VideoConferenceService>& VideoConferenceService::googleServices() {
    static const std::vector<VideoConferenceService> services{googleHangouts(), googleMeet()};
    return services;
}

}  // namespace hbr
