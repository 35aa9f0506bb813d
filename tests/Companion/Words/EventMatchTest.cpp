#include <Words/EventMatch.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

namespace {

using hbr::Event;
using ::testing::ElementsAre;

Event event(std::string id, std::string title, std::string_view start) {
    Event result;
    result.id = std::move(id);
    result.title = std::move(title);
    result.startDate = test::at(start);
    result.endDate = result.startDate.addingTimeInterval(3600);
    return result;
}

TEST(EventMatch, FindsByIdBeginningOrPartOfTheTitle) {
    const std::vector<Event> events = {
        event("abc1", "Planning", "2026-03-02T09:00:00Z"), event("abc1", "Planning", "2026-03-03T09:00:00Z"),
        event("abd2", "Planning the Café", "2026-03-05T09:00:00Z"),
        event("x3", "Review", "2026-03-06T09:00:00Z"), event("x4", "abd", "2026-03-07T09:00:00Z")};
    const std::pair<const char*, std::vector<std::string>> cases[] = {{"abc1", {"abc1"}},
                                                                      {"abc", {"abc1"}},
                                                                      {"ab", {"abc1", "abd2", "x4"}},
                                                                      {"PLANNING", {"abc1"}},
                                                                      {"lann", {"abc1", "abd2"}},
                                                                      {"cafe\u0301", {"abd2"}},
                                                                      {" review ", {"x3"}},
                                                                      {"abd", {"x4"}},
                                                                      {"ABC", {}},
                                                                      {"nothing", {}},
                                                                      {"", {}},
                                                                      {" ", {}}};
    for (const auto& [wanted, ids] : cases) {
        std::vector<std::string> found;
        for (const auto& one : matchingEvents(events, wanted, test::at("2026-03-04T09:00:00Z")))
            found.push_back(one.id);
        EXPECT_EQ(found, ids) << wanted;
    }
}

TEST(EventMatch, ASeriesIsListedByItsNearestOccurrence) {
    const std::vector<Event> series = {
        event("s", "Daily", "2026-03-02T09:00:00Z"), event("s", "Daily", "2026-03-03T09:00:00Z"),
        event("s", "Daily", "2026-03-04T09:00:00Z"), event("s", "Daily", "2026-03-05T09:00:00Z")};
    const std::pair<const char*, const char*> cases[] = {{"2026-03-03T09:30:00Z", "2026-03-03T09:00:00Z"},
                                                         {"2026-03-03T12:00:00Z", "2026-03-04T09:00:00Z"},
                                                         {"2026-03-01T12:00:00Z", "2026-03-02T09:00:00Z"},
                                                         {"2026-03-08T12:00:00Z", "2026-03-05T09:00:00Z"}};
    for (const auto& [now, start] : cases) {
        const auto found = matchingEvents(series, "daily", test::at(now));
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].startDate, test::at(start)) << now;
    }
}

}  // namespace
