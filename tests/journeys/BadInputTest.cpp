#include "Journey.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using ::test::oneEvent;

/// Beside one good event, which must still be shown.
class BadInput : public test::Journey {
  protected:
    BadInput() {
        currentTime = "2026-03-04T09:00:00Z";
        home.write("calendars/good.ics", oneEvent("Kept", "20260304T100000Z", "20260304T110000Z"));
    }
    bool isPipe(const char* name) const { return mkfifo((home / name).c_str(), 0600) == 0; }
};

TEST_F(BadInput, AWrongLocationIsRefusedByName) {
    home.write("notes.ics", "just some text\n");
    home.write("caf\xE9/a.ics", "");
    std::filesystem::create_directories(home / "empty");
    ASSERT_TRUE(isPipe("pipe"));
    const auto folder = home.path().string();
    expectEach({{"setup ~/missing", 1, {"=heedbanner: " + folder + "/missing: no such file or folder\n"}},
                {"setup ~/notes.ics", 1, {folder + "/notes.ics: not an iCalendar file"}},
                {"setup ~/pipe", 1, {folder + "/pipe: neither a file nor a folder"}},
                {"setup ~/empty", 3, {folder + "/empty: no .ics or .vcf files"}},
                {"setup ~/caf\xE9", 1, {"caf\uFFFD: the name is not valid UTF-8"}},
                {"accounts add ~/caf\xE9", 1, {"caf\uFFFD: the name is not valid UTF-8"}},
                {"setup /", 1, {"/: too wide; name the folders"}},
                {"accounts add /", 1, {"/: too wide; name the folders"}},
                {"setup ~/", 1, {"too wide"}},
                {"accounts add ~/", 1, {"too wide"}},
                {"accounts add ~/..", 1, {"too wide"}}});
    EXPECT_FALSE(std::filesystem::exists(configFile("accounts.toml")));
    expect("setup ~/missing ~/calendars", 1);
    expect("agenda", {"Kept"});
}

TEST_F(BadInput, ABadItemIsSkippedAloneAndDoctorSaysWhich) {
    expectEach({{"setup ~/calendars"},
                {"doctor", 0, {"calendars: 1 file, 1 event"}},
                {"doctor --json", 0, {R"("findings": [])"}}});
    home.write("calendars/broken.ics", oneEvent("No start", "", "20260304T110000Z"));
    home.write("calendars/text.ics", "no calendar at all\n");
    ASSERT_TRUE(isPipe("calendars/pipe.ics"));
    // Isolate, override, marks: of them nothing reaches a terminal.
    home.write("calendars/marks.ics",
               oneEvent("a\u2066b\u202Ec\u200Fd\u061Ce", "20260304T120000Z", "20260304T130000Z"));
    expectEach({{"agenda", 0, {"Kept", "abcde", "heedbanner doctor"}},
                {"doctor", 1, {"broken.ics:4", "DTSTART", "text.ics", "pipe.ics"}},
                {"doctor --json", 1}});
}

TEST_F(BadInput, DoctorNamesASettingOfTheWrongTypeOrOutOfRange) {
    expect("setup ~/calendars");
    auto values = readSettings(test::sharedSettings);
    values.set("timeOffsetSeconds", "soon");
    writeSettings(test::sharedSettings, values);
    expectEach({{"settings get timeOffsetSeconds", 0, {"60\n"}},
                {"doctor", 1, {"timeOffsetSeconds takes a whole number of seconds"}},
                {"agenda", 0, {"Kept"}},
                {"settings reset timeOffsetSeconds"},
                {"doctor"}});
    values = readSettings(test::sharedSettings);
    values.set("upcomingEventsDaysFilter", std::int64_t{366});
    writeSettings(test::sharedSettings, values);
    expectEach({{"doctor", 1, {"from 0 to 365", "the stored value 366 is out of range"}},
                {"agenda", 0, {"Kept"}},
                {"settings reset upcomingEventsDaysFilter"},
                {"doctor"}});
    EXPECT_NE(type("settings set timeOffsetSeconds 2h").err, "") << "a warning";
    EXPECT_EQ(type("settings set includeTravelTime true").err, "") << "the lead was not set";
}

TEST_F(BadInput, ABadSettingsFileIsSetAsideNotOverwritten) {
    home.write("config/heedbanner/" + test::sharedSettings, "garbage");
    EXPECT_NE(expect("settings set timeOffsetSeconds 5m").err, "");
    int setAside = 0;
    for (const auto& entry : std::filesystem::directory_iterator(home / "config/heedbanner")) {
        if (std::filesystem::is_regular_file(entry) && test::readFile(entry.path()) == "garbage") ++setAside;
    }
    EXPECT_EQ(setAside, 1);
    EXPECT_EQ(type("settings get timeOffsetSeconds").out, "300\n");
}

TEST_F(BadInput, AWrongValueIsRefusedWithTheSettingsNameAndWhatItTakes) {
    expectEach(
        {{"settings set timeOffsetSeconds soon", 2, {"timeOffsetSeconds takes a whole number of seconds"}},
         {"settings set timeOffsetSeconds 25h", 2, {"timeOffsetSeconds takes a whole number of seconds"}},
         {"settings set defaultSnooze1 0", 2, {"defaultSnooze1 takes a whole number of minutes from 1"}},
         {"settings set includeTravelTime maybe", 2, {"includeTravelTime takes true or false"}},
         {"settings set customSnoozeTimes 5,x", 2, {"customSnoozeTimes takes"}},
         {"settings set excludeRules [{}]", 2, {"excludeRules takes"}},
         {"settings set includeTravelTimes true", 2, {"did you mean \"includeTravelTime\"?"}}});
    EXPECT_FALSE(readSettings(test::sharedSettings).find("timeOffsetSeconds"));
}

TEST_F(BadInput, AWrongCommandOrOptionProposesTheNearest) {
    expectEach({{"agneda", 2, {"did you mean \"agenda\"?"}},
                {"agenda --dais 2", 2, {"did you mean \"--days\"?"}},
                {"agenda --days many", 2, {"--days"}},
                {"accounts lits", 2, {"did you mean \"list\"?"}},
                {"events --from soon --to later", 2, {"\"soon\" is not a time"}},
                {"events --from today", 2, {"--to"}},
                {"agenda --now noon", 2, {"RFC 3339"}},
                {"accounts remove Nobody", 3, {"no account is called \"Nobody\""}},
                {"setup --undo", 3, {"no setup to undo"}},
                {"agenda", 3, {"heedbanner setup"}},
                {"snooze next", 2, {"snooze: add one of --minutes"}},
                {"snooze next --minutes 5 --clear", 2, {"add one of"}},
                {"links ~/missing", 1, {"missing"}}});
}

}  // namespace
