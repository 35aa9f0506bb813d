#include "Journey.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <unistd.h>
#include <map>

namespace {

using ::test::Journey;
using ::testing::AllOf;
using ::testing::HasSubstr;
using ::testing::Not;

/// Paths below the home folder and what the files hold.
using Files = std::map<std::string, std::string>;

const std::string card = "BEGIN:VCARD\nVERSION:3.0\nFN:Ada\nEMAIL:ada@example.org\nEND:VCARD\n";

std::string attendee(const std::string& address) {
    return "ATTENDEE:mailto:" + address + "\r\n";
}

/// Meetings of `who` with somebody else each time, in one folder.
Files meetings(const std::string& folder, const std::string& who, int count) {
    Files files;
    for (int i = 0; i < count; ++i) {
        const std::string number = std::to_string(i);
        files[folder + "/m" + number + ".ics"] =
            test::oneEvent(folder + number, "20260304T090000Z", "20260304T100000Z",
                           "ORGANIZER:mailto:guest" + number + "@example.net\r\n" + attendee(who) +
                               "ATTENDEE;CUTYPE=ROOM:mailto:room@example.org\r\n");
    }
    return files;
}

Files together(Files files, const Files& more) {
    files.insert(more.begin(), more.end());
    return files;
}

const Files vdirsyncer = {
    {"config/vdirsyncer/config",
     "[general]\nstatus_path = \"~/status/\"\n"
     "[storage cal]\ntype = \"filesystem\"\npath = \"$HOME/dav/cal/\"\nfileext = \".ics\"\n"
     "[storage people]\ntype = \"filesystem\"\npath = \"~/dav/people\"\nfileext = \".vcf\"\n"
     "[storage team]\ntype = \"singlefile\"\npath = \"~/dav/%s.ics\"\n"
     "[storage away]\ntype = \"caldav\"\nurl = \"https://example.org\"\n"}};
const Files khal = {
    {"config/khal/config",
     "[calendars]\n  [[work]]\n  path = ~/dav/cal/work # mine\n  addresses = me@work.example, "
     "other@work.example\n  [[all]]\n  path = ~/dav/cal/*\n  type = discover\n[locale]\n"}};

class Setup : public Journey {
  protected:
    void write(const Files& files) const {
        for (const auto& [name, content] : files)
            home.write(name, content);
    }
    /// "NAME | place below the home | contents | addresses" of each account.
    std::vector<std::string> accounts() {
        std::vector<std::string> lines;
        const auto text = test::readFile(configFile("accounts.toml"));
        for (const auto* list : {"accounts", "contacts"}) {
            const auto entries = json(companion({list, "list", "--json"}));
            for (const auto& entry : *entries.asArray()) {
                std::string line =
                    *entry.find("name")->asString() + " | " +
                    entry.find("location")->asString()->substr(home.path().native().size() + 1);
                line += list == std::string("contacts") ? " | contacts" : "";
                if (const auto* addresses = entry.find("addresses")) {
                    for (const auto& address : *addresses->asArray())
                        line += " | " + *address.asString();
                }
                lines.push_back(line);
            }
        }
        return lines;
    }
    /// Every event title of 4 March 2026, so that a calendar read twice shows.
    std::vector<std::string> titles() {
        std::vector<std::string> all;
        const auto events = json(companion(
            {"events", "--from", "2026-03-04T00:00:00Z", "--to", "2026-03-05T00:00:00Z", "--json"}));
        for (const auto& event : *events.asArray())
            all.push_back(*event.find("title")->asString());
        return all;
    }
};

TEST_F(Setup, WhatOtherProgramsAndUsualPlacesHoldBecomesAccountsOnce) {
    const std::string one = test::oneEvent("One", "20260304T090000Z", "20260304T100000Z");
    struct {
        std::string name;
        Files files;
        std::vector<std::string> accounts;
        std::size_t events;
        /// Made links, from name to target.
        Files links = {};
    } const homes[] = {
        {"vdirsyncer",
         together(together(vdirsyncer, meetings("dav/cal/work", "Me@work.example", 5)),
                  {{"dav/cal/home/a.ics", one},
                   {"dav/people/book/a.vcf", card},
                   {"dav/people/displayname", "P"},
                   {"dav/team.ics", one}}),
         {"cal | dav/cal | Me@work.example", "team | dav/team.ics", "people | dav/people | contacts"},
         7},
        {"files", {{"team.ics", one}, {"Downloads/a.ics", one}}, {"team | team.ics"}, 1},
        {"contacts beside calendars",
         {{"data/calendars/cal/a.ics", one},
          {"data/calendars/book/a.vcf", card},
          {"data/calendars/book/displayname", "Book"},
          {".contacts/a.vcf", card}},
         {"calendars | data/calendars", "contacts | .contacts | contacts",
          "calendars contacts | data/calendars | contacts"},
         1},
        {"two programs and a link",
         together(together(vdirsyncer, khal),
                  together(meetings("dav/cal/work", "me@work.example", 5),
                           {{"dav/cal/home/a.ics", one}, {"dav/people/a.vcf", card}})),
         {"cal | dav/cal | me@work.example | other@work.example", "people | dav/people | contacts"},
         6,
         {{".calendars", "dav/cal"}, {".contacts", "dav/people"}}}};
    for (const auto& [name, files, expected, events, links] : homes) {
        SCOPED_TRACE(name);
        write(files);
        for (const auto& [from, to] : links)
            std::filesystem::create_symlink(home / to, home / from);
        const auto setup = expect("setup --yes");
        EXPECT_THAT(setup.err, Not(testing::ContainsRegex("[^ ] ?[(](khal|vdirsyncer)"))) << "set apart";
        EXPECT_EQ(accounts(), expected) << setup.out << setup.err;
        EXPECT_EQ(titles().size(), events);
        // A named address book is no empty calendar.
        expect("calendars list", {"!Book"});

        const auto stored = test::readFile(configFile("accounts.toml"));
        expect("setup --yes", {"Nothing new"});
        EXPECT_EQ(test::readFile(configFile("accounts.toml")), stored);

        expect("setup --undo");
        EXPECT_TRUE(accounts().empty());
        const auto settings = readSettings(test::sharedSettings);
        for (const char* active : {"activeCalendarIdentifiers", "activeReminderListIdentifiers"}) {
            const auto* list = settings.find(active);
            EXPECT_TRUE(!list || list->asArray()->empty()) << active;
        }
        expect("setup --undo", 3);
        for (const auto& entry : std::filesystem::directory_iterator(home.path()))
            std::filesystem::remove_all(entry);
    }
}

TEST_F(Setup, APlaceThatCannotBeReadIsReportedAndTheRestIsAdded) {
    write({{".calendars/a.ics", "hidden"}});
    chmod((home / ".calendars").c_str(), 0);
    // Root reads everything unless it gives that up.
    const auto setUp = [&] {
        if (geteuid() != 0) return companion({"setup", "--yes"});
        return run("/usr/bin/setpriv", {"--bounding-set=-dac_override,-dac_read_search",
                                        programs() + "/heedbanner", "setup", "--yes"});
    };
    const auto alone = setUp();
    EXPECT_EQ(alone.exitCode, 1) << alone.out;
    EXPECT_THAT(alone.err, HasSubstr((home / ".calendars").string() + ": cannot be read: no permission"));
    EXPECT_FALSE(std::filesystem::exists(configFile("accounts.toml")));

    write({{"team.ics", test::oneEvent("One", "20260304T090000Z", "20260304T100000Z")}});
    EXPECT_EQ(setUp().exitCode, 1);
    EXPECT_EQ(accounts(), std::vector<std::string>{"team | team.ics"});
    chmod((home / ".calendars").c_str(), 0700);
}

TEST_F(Setup, AHomeWithoutCalendarsGetsAnExplanation) {
    write({{"config/vdirsyncer/config", "[storage a]\ntype = \"filesystem\"\npath = \"~/later\"\n"}});
    const auto setup = companion({"setup", "--yes"});
    EXPECT_EQ(setup.exitCode, 3);
    EXPECT_THAT(setup.err, AllOf(HasSubstr("vdirsyncer names ~/later, which does not exist"),
                                 HasSubstr("no calendars found"), HasSubstr("heedbanner setup FOLDER")));
    EXPECT_EQ(setup.out, "");
    EXPECT_FALSE(std::filesystem::exists(configFile("accounts.toml")));
}

TEST_F(Setup, AccountsThatAreThereStayAndOnlyTheRestIsAdded) {
    write(together(meetings(".calendars/work", "me@example.org", 5),
                   meetings(".calendars/home", "me@home.example", 2)));
    companion({"accounts", "add", home / ".calendars/work", "--name", "Mine"});
    home.write("config/heedbanner/accounts.toml",
               "# by hand\n" + test::readFile(configFile("accounts.toml")));
    const auto before = test::readFile(configFile("accounts.toml"));

    EXPECT_THAT(companion({"setup"}).out, "");
    EXPECT_EQ(test::readFile(configFile("accounts.toml")), before);
    EXPECT_THAT(companion({"setup", "--yes"}).out, AllOf(HasSubstr("already there"), HasSubstr("home (")));
    EXPECT_EQ(accounts(), (std::vector<std::string>{"Mine | .calendars/work", "home | .calendars/home"}));
    EXPECT_EQ(titles().size(), 7u);
    write(meetings(".calendars/home/more", "me@home.example", 1));
    EXPECT_THAT(companion({"setup", "--yes"}).out, HasSubstr("New in home, watched now: more\n"));
    companion({"setup", home / ".calendars/work", "--email", "me@example.org"});
    EXPECT_EQ(accounts().front(), "Mine | .calendars/work | me@example.org");
    EXPECT_EQ(companion({"setup", "--undo"}).exitCode, 0);
    EXPECT_EQ(accounts().front(), "Mine | .calendars/work");
    EXPECT_EQ(companion({"accounts", "remove", "home"}).exitCode, 0);
    EXPECT_EQ(test::readFile(configFile("accounts.toml")), before);
}

TEST_F(Setup, APersonIsAskedOnATerminal) {
    auto files = meetings(".calendars/work", "me@example.org", 3);
    files["Downloads/a.ics"] = test::oneEvent("One", "20260304T090000Z", "20260304T100000Z");
    write(files);
    variables["PATH"] = programs() + ":/usr/bin:/bin";
    const auto answer = [&](const std::string& typed) {
        return run("/bin/bash", {"-c", "printf '" + typed + "' | script -qec 'heedbanner setup' /dev/null"})
            .out;
    };
    EXPECT_THAT(answer("n\\n"), AllOf(HasSubstr("~/.calendars"), HasSubstr("Add 1? [Y/n, or numbers]"),
                                      HasSubstr("Nothing was added")));
    EXPECT_TRUE(accounts().empty());
    EXPECT_THAT(answer("1 2\\n\\n"), HasSubstr("Is me@example.org your address (in 3 of 3 meetings)? [Y/n]"));
    EXPECT_EQ(accounts(),
              (std::vector<std::string>{"calendars | .calendars | me@example.org", "a | Downloads/a.ics"}));
}

}  // namespace
