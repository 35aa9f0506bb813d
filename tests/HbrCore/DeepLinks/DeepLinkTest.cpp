#include <HbrCore/DeepLinks/DeepLink.h>
#include <gtest/gtest.h>

namespace {

using namespace hbr;

std::string parsed(std::string_view address) {
    const auto link = DeepLinkBuilder().make(platform::Url::parse(address).value());
    if (const auto* preview = dynamic_cast<PreviewEventDeepLink*>(link.get()))
        return "preview " + preview->eventID;
    if (const auto* view = dynamic_cast<ViewEventInCalendarDeepLink*>(link.get()))
        return "view " + view->eventID;
    if (const auto* join = dynamic_cast<JoinCallDeepLink*>(link.get())) return "join " + join->eventID;
    return "nothing";
}

TEST(DeepLink, OnlyTheThreeActionsOnAnEventAreUnderstood) {
    const std::pair<const char*, const char*> cases[] = {{"heedbanner://preview/E1", "preview E1"},
                                                         {"heedbanner://viewInCalendar/E1", "view E1"},
                                                         {"heedbanner://joinCall/E1", "join E1"},
                                                         {"heedbanner://joinCall//E1/extra", "join E1"},
                                                         {"heedbanner://preview/A%20B?q=1#f", "preview A B"},
                                                         {"heedbanner://joinCall", "nothing"},
                                                         {"heedbanner://joinCall/", "nothing"},
                                                         {"Heedbanner://joinCall/E1", "nothing"},
                                                         {"https://joinCall/E1", "nothing"},
                                                         {"heedbanner://JoinCall/E1", "nothing"},
                                                         {"heedbanner://join/E1", "nothing"},
                                                         {"heedbanner:///E1", "nothing"},
                                                         {"heedbanner:joinCall/E1", "nothing"},
                                                         {"HEEDBANNER://joinCall/E1", "nothing"},
                                                         {"heedbanner://joincall/E1", "nothing"},
                                                         {"heedbanner://joinCall.example/E1", "nothing"},
                                                         {"heedbanner://joinCall?E1", "nothing"},
                                                         {"heedbanner://joinCall/?id=E1", "nothing"},
                                                         {"heedbanner://joinCall//", "nothing"},
                                                         {"heedbanner://me:pw@joinCall:80/E1", "join E1"},
                                                         {"heedbanner://viewInCalendar/100%25", "view 100%"},
                                                         {"heedbanner://preview/%2541", "preview %41"},
                                                         {"heedbanner://preview/a%2Fb", "preview a"},
                                                         {"heedbanner://preview/%2F/b", "preview b"},
                                                         {"heedbanner://preview/%20", "preview  "}};
    for (const auto& [address, expected] : cases)
        EXPECT_EQ(parsed(address), expected) << address;
}

TEST(DeepLink, EveryIdentifierWithoutASlashComesBack) {
    for (const std::string id : {"ABC-123", "a b", "50%", "a%20b", "?#&=", "ä🦊", "a:b@c", ";,+"}) {
        EXPECT_EQ(parsed(JoinCallDeepLink(id).url().absoluteString()), "join " + id);
    }
    EXPECT_EQ(JoinCallDeepLink("ABC-123").url().absoluteString(), "heedbanner://joinCall/ABC-123");
    EXPECT_EQ(PreviewEventDeepLink("a b%ä").url().absoluteString(), "heedbanner://preview/a%20b%25%C3%A4");
    EXPECT_EQ(parsed(ViewEventInCalendarDeepLink("").url().absoluteString()), "nothing");
    EXPECT_EQ(parsed(PreviewEventDeepLink("a/b").url().absoluteString()), "preview a");
}

}  // namespace
