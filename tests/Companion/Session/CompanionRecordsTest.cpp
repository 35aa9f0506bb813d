#include <Session/CompanionRecords.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

#include <thread>

namespace hbr {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

TEST(CompanionRecords, DecisionsOfSeveralProgramsAtOnceAreAllKeptOnce) {
    const test::TestEnvironment world;
    std::vector<std::jthread> programs;
    for (const std::string own : {"a", "b", "c"}) {
        programs.emplace_back(
            [&world, own] { CompanionRecords(*world.ref()).addDecided({"shared", own, "shared"}); });
    }
    programs.clear();
    CompanionRecords records(*world.ref());
    EXPECT_THAT(records.decidedIdentifiers(), UnorderedElementsAre("shared", "a", "b", "c"));
    records.removeDecided({"shared", "b", "unknown"});
    EXPECT_THAT(CompanionRecords(*world.ref()).decidedIdentifiers(), UnorderedElementsAre("a", "c"));
}

TEST(CompanionRecords, TheLastSetupCanBeUndoneByALaterProgramOnce) {
    const test::TestEnvironment world;
    CompanionRecords(*world.ref())
        .setLastSetup({.accounts = {"Home"},
                       .calendars = {"c1", "c2"},
                       .reminderLists = {},
                       .addresses = {{"Work", {"ann@example.org"}}}});
    CompanionRecords later(*world.ref());
    const SetupRecord setup = later.lastSetup();
    EXPECT_THAT(setup.accounts, ElementsAre("Home"));
    EXPECT_THAT(setup.calendars, ElementsAre("c1", "c2"));
    EXPECT_THAT(setup.reminderLists, IsEmpty());
    EXPECT_THAT(setup.addresses.at("Work"), ElementsAre("ann@example.org"));
    later.setLastSetup({});
    EXPECT_TRUE(CompanionRecords(*world.ref()).lastSetup().empty());
}

TEST(CompanionRecords, ValuesOfTheWrongTypeAreNoRecords) {
    const test::TestEnvironment world;
    world.home.write("data/heedbanner/companion.plist",
                     R"(<plist version="1.0"><dict><key>decidedIdentifiers</key><integer>7</integer>
                        <key>lastSetup</key><dict><key>accounts</key><string>x</string></dict></dict></plist>)");
    CompanionRecords records(*world.ref());
    EXPECT_THAT(records.decidedIdentifiers(), IsEmpty());
    EXPECT_TRUE(records.lastSetup().empty());
    records.addDecided({"a"});
    EXPECT_THAT(records.decidedIdentifiers(), ElementsAre("a"));
}

}  // namespace
}  // namespace hbr
