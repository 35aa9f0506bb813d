#include "Journey.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <algorithm>

namespace {

using ::test::Journey;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

class BadInput : public Journey {};

/// A folder with one good calendar, so that there is something that must still be shown.
const std::string good = test::oneEvent("Kept", "20260304T100000Z", "20260304T110000Z");
const std::string now = "2026-03-04T09:00:00Z";

TEST_F(BadInput, AWrongLocationIsRefusedByName) {
    home.write("notes.ics", "just some text\n");
    std::filesystem::create_directories(home / "empty");
    ASSERT_EQ(mkfifo((home / "pipe").c_str(), 0600), 0);
    const std::tuple<std::string, int, std::string> cases[] = {{"missing", 1, "no such file or folder"},
                                                               {"notes.ics", 1, "not an iCalendar file"},
                                                               {"pipe", 1, "neither a file nor a folder"},
                                                               {"empty", 3, "no .ics or .vcf files"}};
    home.write("caf\xE9/a.ics", good);
    const std::pair<std::string, std::string> refusedByBoth[] = {
        {home / "caf\xE9", "caf\uFFFD: the name is not valid UTF-8"},
        {"/", "/: too wide; name the folders"},
        {home.path().parent_path(), "too wide"},
        {home.path(), "too wide"}};
    for (const Arguments& adding : {Arguments{"setup"}, Arguments{"accounts", "add"}}) {
        for (const auto& [location, message] : refusedByBoth) {
            auto arguments = adding;
            arguments.push_back(location);
            const auto outcome = companion(arguments);
            EXPECT_EQ(outcome.exitCode, 1) << location;
            EXPECT_THAT(outcome.err, HasSubstr(message));
        }
    }
    for (const auto& [location, exitCode, message] : cases) {
        const auto outcome = companion({"setup", (home / location).string()});
        EXPECT_EQ(outcome.exitCode, exitCode) << location;
        EXPECT_THAT(outcome.err, HasSubstr((home / location).string() + ": " + message));
        EXPECT_EQ(outcome.out, "");
    }
    EXPECT_FALSE(std::filesystem::exists(configFile("accounts.toml")));
}

TEST_F(BadInput, AGoodLocationBesideAWrongOneIsAdded) {
    home.write("calendars/good.ics", good);
    const auto outcome = companion({"setup", home / "missing", home / "calendars"});
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_THAT(companion({"agenda", "--now", now}).out, HasSubstr("Kept"));
}

TEST_F(BadInput, ABadItemIsSkippedAloneAndDoctorTellsWhich) {
    home.write("calendars/good.ics", good);
    home.write("calendars/broken.ics", test::oneEvent("No start", "", "20260304T110000Z"));
    home.write("calendars/text.ics", "no calendar at all\n");
    ASSERT_EQ(mkfifo((home / "calendars/pipe.ics").c_str(), 0600), 0);
    // Isolate, override, marks: of them nothing reaches a terminal.
    home.write("calendars/marks.ics",
               test::oneEvent("a\u2066b\u202Ec\u200Fd\u061Ce", "20260304T120000Z", "20260304T130000Z"));
    EXPECT_EQ(companion({"setup", home / "calendars"}).exitCode, 0);
    EXPECT_THAT(companion({"agenda", "--now", now}).out, HasSubstr("abcde"));

    const auto agenda = companion({"agenda", "--now", now});
    EXPECT_EQ(agenda.exitCode, 0);
    EXPECT_THAT(agenda.out, HasSubstr("Kept"));
    EXPECT_THAT(agenda.err, HasSubstr("heedbanner doctor"));

    const auto doctor = companion({"doctor", "--now", now});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.out, HasSubstr("broken.ics:4"));
    EXPECT_THAT(doctor.out, HasSubstr("DTSTART"));
    EXPECT_THAT(doctor.out, HasSubstr("text.ics"));
    EXPECT_THAT(doctor.out, HasSubstr("pipe.ics"));
    EXPECT_EQ(companion({"doctor", "--json", "--now", now}).exitCode, 1);
}

TEST_F(BadInput, DoctorFindsNothingInGoodCalendars) {
    home.write("calendars/good.ics", good);
    companion({"setup", home / "calendars"});
    const auto doctor = companion({"doctor", "--now", now});
    EXPECT_EQ(doctor.exitCode, 0) << doctor.out;
    EXPECT_THAT(doctor.out, HasSubstr("calendars: 1 file, 1 event"));
}

TEST_F(BadInput, ASettingOfAWrongKindCountsAsItsDefaultAndDoctorNamesIt) {
    home.write("calendars/good.ics", good);
    companion({"setup", home / "calendars"});
    auto values = readSettings(test::sharedSettings);
    values.set("timeOffsetSeconds", "soon");
    writeSettings(test::sharedSettings, values);

    EXPECT_EQ(companion({"settings", "get", "timeOffsetSeconds"}).out, "60\n");
    const auto doctor = companion({"doctor", "--now", now});
    EXPECT_EQ(doctor.exitCode, 1);
    EXPECT_THAT(doctor.out, HasSubstr("timeOffsetSeconds takes a whole number of seconds"));
    EXPECT_THAT(companion({"agenda", "--now", now}).out, HasSubstr("Kept"));
    EXPECT_EQ(companion({"settings", "reset", "timeOffsetSeconds"}).exitCode, 0);
    EXPECT_EQ(companion({"doctor", "--now", now}).exitCode, 0);
}

TEST_F(BadInput, ASettingsFileThatIsNoneIsSetAsideNotOverwritten) {
    home.write("config/heedbanner/" + test::sharedSettings, "garbage");
    const auto outcome = companion({"settings", "set", "timeOffsetSeconds", "5m"});
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    EXPECT_THAT(outcome.err, Not(testing::IsEmpty()));
    int setAside = 0;
    for (const auto& entry : std::filesystem::directory_iterator(home / "config/heedbanner")) {
        if (std::filesystem::is_regular_file(entry) && test::readFile(entry.path()) == "garbage") ++setAside;
    }
    EXPECT_EQ(setAside, 1);
    EXPECT_EQ(companion({"settings", "get", "timeOffsetSeconds"}).out, "300\n");
}

TEST_F(BadInput, AWrongValueIsRefusedWithTheSettingsNameAndWhatItTakes) {
    const std::pair<std::vector<std::string>, std::string> cases[] = {
        {{"timeOffsetSeconds", "soon"}, "timeOffsetSeconds takes a whole number of seconds from 0"},
        {{"timeOffsetSeconds", "25h"}, "timeOffsetSeconds takes a whole number of seconds from 0"},
        {{"defaultSnooze1", "0"}, "defaultSnooze1 takes a whole number of minutes from 1"},
        {{"includeTravelTime", "maybe"}, "includeTravelTime takes true or false"},
        {{"customSnoozeTimes", "5,x"}, "customSnoozeTimes takes"},
        {{"excludeRules", "[{}]"}, "excludeRules takes"},
        {{"includeTravelTimes", "true"}, "did you mean \"includeTravelTime\"?"}};
    for (const auto& [arguments, message] : cases) {
        std::vector<std::string> command = {"settings", "set"};
        command.insert(command.end(), arguments.begin(), arguments.end());
        const auto outcome = companion(command);
        EXPECT_EQ(outcome.exitCode, 2) << arguments[0];
        EXPECT_THAT(outcome.err, HasSubstr(message));
    }
    EXPECT_FALSE(readSettings(test::sharedSettings).find("timeOffsetSeconds"));
}

TEST_F(BadInput, AWidgetOrFamilyThatIsNotOfferedIsAnsweredWithWhatThereIs) {
    home.write("calendars/good.ics", good);
    companion({"setup", home / "calendars"});
    const std::pair<Arguments, std::string> cases[] = {
        {{"timeline", "calendar", "--json"}, "upcoming"},
        {{"render", "countdown", "--family", "large", "-o", home / "x.png"}, "medium"},
        {{"render", "upcoming", "--family", "huge", "-o", home / "x.png"}, "large"},
        {{"render", "upcoming", "--entry", "7", "-o", home / "x.png"}, "entry"}};
    for (const auto& [arguments, message] : cases) {
        const auto outcome = widgets(arguments);
        EXPECT_EQ(outcome.exitCode, 1) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, HasSubstr(message));
        EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    }
    EXPECT_FALSE(std::filesystem::exists(home / "x.png"));
}

TEST_F(BadInput, AWrongCommandOrOptionProposesTheNearest) {
    const std::tuple<Arguments, int, std::string> cases[] = {
        {{"agneda"}, 2, "did you mean \"agenda\"?"},
        {{"agenda", "--dais", "2"}, 2, "did you mean \"--days\"?"},
        {{"agenda", "--days", "many"}, 2, "--days"},
        {{"accounts", "lits"}, 2, "did you mean \"list\"?"},
        {{"events", "--from", "soon", "--to", "later"}, 2, "\"soon\" is no time"},
        {{"events", "--from", "today"}, 2, "--to"},
        {{"agenda", "--now", "noon"}, 2, "RFC 3339"},
        {{"accounts", "remove", "Nobody"}, 3, "no account is called \"Nobody\""},
        {{"setup", "--undo"}, 3, "no setup to take back"},
        {{"agenda"}, 3, "heedbanner setup"},
        {{"links", home / "missing"}, 1, "missing"}};
    for (const auto& [arguments, exitCode, message] : cases) {
        const auto outcome = companion(arguments);
        EXPECT_EQ(outcome.exitCode, exitCode) << testing::PrintToString(arguments);
        EXPECT_THAT(outcome.err, StartsWith("heedbanner: "));
        EXPECT_THAT(outcome.err, HasSubstr(message));
        EXPECT_EQ(outcome.out, "");
    }
}

}  // namespace
