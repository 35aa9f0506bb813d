#include "Journey.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using Words = std::vector<std::string>;

class Completion : public test::Journey {
  protected:
    /// The words that a shell would offer for the last one.
    Words offered(Words words) {
        words.insert(words.begin(), "--complete");
        const auto outcome = companion(words);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.err, "");
        std::istringstream lines(outcome.out);
        Words result;
        for (std::string line; std::getline(lines, line);)
            result.push_back(line.substr(0, line.find('\t')));
        return result;
    }
};

TEST_F(Completion, OffersCommandsOptionsAndWhatTheUserHas) {
    home.write("calendars/Team/a.ics", test::oneEvent("Planning", "20260304T090000Z", "20260304T100000Z"));
    home.write("calendars/Home/a.ics", test::oneEvent("Dinner", "20260304T180000Z", "20260304T200000Z"));
    EXPECT_THAT(offered({"calendars", "activate", ""}), IsEmpty());
    ASSERT_EQ(companion({"setup", home / "calendars"}).exitCode, 0);

    EXPECT_THAT(offered({""}), IsSupersetOf({"agenda", "setup", "doctor"}));
    EXPECT_THAT(offered({"--verbose", "ag"}), ElementsAre("agenda"));
    EXPECT_THAT(offered({"--now", "ag"}), IsEmpty());
    EXPECT_THAT(offered({"rules", "r"}), ElementsAre("remove"));
    EXPECT_THAT(offered({"settings", "set", "timeOff"}), ElementsAre("timeOffsetSeconds"));
    EXPECT_THAT(offered({"settings", "set", "timeOffsetSeconds", ""}), IsEmpty());
    EXPECT_THAT(offered({"agenda", "--d"}), ElementsAre("--days"));
    EXPECT_THAT(offered({"agenda", "--days", ""}), IsEmpty());
    EXPECT_THAT(offered({"calendars", "activate", ""}), ElementsAre("calendars/Home", "calendars/Team"));
    EXPECT_THAT(offered({"calendars", "activate", "calendars/Home", "calendars/T"}),
                ElementsAre("calendars/Team"));
    EXPECT_THAT(offered({"accounts", "remove", ""}), ElementsAre("calendars"));
    EXPECT_THAT(offered({"nothing", "of", "this"}), IsEmpty());

    ASSERT_EQ(companion({"remind", "Call Anna", "--in", "2h"}).exitCode, 0);
    EXPECT_THAT(offered({"show", ""}), IsSupersetOf({"now", "next", "Call Anna"}));
    EXPECT_THAT(offered({"show", "P"}), Not(Contains("Planning")));
}

}  // namespace
