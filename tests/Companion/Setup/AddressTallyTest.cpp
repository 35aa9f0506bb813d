#include <Setup/AddressTally.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace {

/// A meeting for each entry, with these people ("room:ADDRESS" for a room).
std::vector<std::string> candidates(const char* calendar,
                                    const std::vector<std::vector<std::string>>& meetings) {
    const test::TemporaryDirectory home;
    platform::FoundCollection collection;
    collection.location = home / calendar;
    for (std::size_t i = 0; i < meetings.size(); ++i) {
        std::string text = "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:" + std::to_string(i) + "\n";
        for (const std::string& person : meetings[i])
            text += person.starts_with("room:") ? "ATTENDEE;CUTYPE=ROOM:mailto:" + person.substr(5) + "\n"
                                                : "ATTENDEE:mailto:" + person + "\n";
        collection.files.push_back(
            home.write("m" + std::to_string(i) + ".ics", text + "END:VEVENT\nEND:VCALENDAR\n"));
    }
    std::vector<std::string> lines;
    for (const auto& one : hbr::addressCandidates({collection}))
        lines.push_back(one.address + " " + std::to_string(one.meetings) + "/" +
                        std::to_string(one.allMeetings) + (one.isSure ? " sure" : ""));
    return lines;
}

TEST(AddressTally, WhoTakesPartInMostMeetingsIsTheUser) {
    const std::vector<std::vector<std::string>> five = {{"Me@x.example", "a@y"},
                                                        {"me@x.example", "b@y"},
                                                        {"me@x.example", "c@y"},
                                                        {"me@x.example", "d@y"},
                                                        {"me@x.example", "e@y"}};
    const std::vector<std::vector<std::string>> four(five.begin(), five.end() - 1);
    const std::tuple<const char*, std::vector<std::vector<std::string>>, std::vector<std::string>> cases[] = {
        {"cal", five, {"Me@x.example 5/5 sure"}},
        // Too few to be sure.
        {"cal", four, {"Me@x.example 4/4"}},
        {"cal", {{"me@x", "you@x"}, {"me@x", "you@x"}, {"me@x", "z@x"}}, {"me@x 3/3", "you@x 2/3"}},
        {"you@x", {{"me@x", "you@x"}, {"me@x", "you@x"}, {"me@x", "z@x"}}, {"you@x 2/3"}},
        // Half is not most; one person alone is no meeting; a room is nobody.
        {"cal", {{"me@x", "a@x"}, {"b@x", "c@x"}}, {}},
        {"cal", {{"me@x"}, {"me@x", "room:big@x"}}, {}},
        {"cal", {{"me@x", "a@group.calendar.google.com"}}, {}},
        {"cal", {}, {}}};
    for (const auto& [calendar, meetings, expected] : cases)
        EXPECT_EQ(candidates(calendar, meetings), expected) << calendar << " " << meetings.size();

    // An address is listed once, with its strongest proof.
    std::vector<hbr::AddressCandidate> all;
    for (const hbr::AddressCandidate& one : {hbr::AddressCandidate{"a@x", 9, 9, false},
                                             {"b@x", 5, 5, true},
                                             {"A@x", 6, 6, true},
                                             {"B@x", 4, 4, false}})
        addCandidate(all, one);
    ASSERT_EQ(all.size(), 2u);
    EXPECT_EQ(all[0].address + all[1].address, "A@xb@x");
}

}  // namespace
