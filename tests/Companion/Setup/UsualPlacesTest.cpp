#include <Setup/UsualPlaces.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

#include <map>

namespace {

/// "PROGRAM: PLACE ADDRESS …" of each candidate, "? " before one that needs consent, "! " before a note.
std::vector<std::string> found(const std::map<std::string, std::string>& files) {
    const test::TestEnvironment world;
    for (const auto& [name, content] : files)
        world.home.write(name, content);
    std::vector<std::string> lines;
    const auto places = hbr::usualPlaces(*world.ref());
    for (const auto& one : places.candidates) {
        std::string line = one.needsConsent ? "? " : "";
        for (const auto& program : one.knownFrom)
            line += program + ": ";
        line += one.location.lexically_normal().lexically_relative(world.home.path()).string();
        for (const auto& address : one.addresses)
            line += " " + address;
        lines.push_back(line);
    }
    for (const auto& note : places.notes)
        lines.push_back("! " + note);
    return lines;
}

TEST(UsualPlaces, ComeFromOtherProgramsFoldersAndFilesOfTheHome) {
    const std::string calendar = "BEGIN:VCALENDAR\nEND:VCALENDAR\n";
    const std::string disk = "[storage a]\ntype = filesystem\npath = ";
    const std::tuple<const char*, std::map<std::string, std::string>, std::vector<std::string>> cases[] = {
        {"nothing", {}, {}},
        {"the first configuration of a program is the only one",
         {{".vdirsyncer/config", disk + "~/a\n"}, {"config/vdirsyncer/config", disk + "~/b\n"}, {"a/x", ""}},
         {"vdirsyncer: a"}},
        {"a single file's collections, other storages are ignored",
         {{"config/vdirsyncer/config",
           "path = x\n[storage a]\ntype = \"singlefile\"\npath = \"~/dav/%s.ics\"\n[storage b]\ntype = "
           "\"caldav\"\n"
           "path = \"~/dav\"\n[pair c]\ntype = \"filesystem\"\npath = \"~/dav\"\n"},
          {"dav/one.ics", ""},
          {"dav/two.ics", ""},
          {"dav/three.txt", ""}},
         {"vdirsyncer: dav/one.ics", "vdirsyncer: dav/two.ics"}},
        {"all folders of a folder are that folder, and addresses come along",
         {{"config/khal/config",
           "[calendars]\n  [[work]]\n  path = ~/dav/work # mine\n  addresses = me@work.example, , "
           "b@x.example\n"
           "  [[all]]\n  path = ~/dav/*/\n[locale]\n  [[x]]\n  path = ~/dav\n"},
          {"dav/work/a.ics", calendar}},
         {"khal: dav/work me@work.example b@x.example", "khal: dav"}},
        {"address books",
         {{"config/khard/khard.conf", "[addressbooks]\n[[p]]\npath = '~/people'\n"}, {"people/a.vcf", ""}},
         {"khard: people"}},
        {"what cannot be used is said",
         {{"config/vdirsyncer/config", disk + "~/later\n[storage b]\ntype = filesystem\n"},
          {"config/khal/config/file", ""}},
         {"! vdirsyncer names ~/later, which does not exist (yet)",
          "! the section [storage b] of vdirsyncer has no plain path; name its folder: heedbanner setup "
          "FOLDER",
          "! ~/config/khal/config (khal) cannot be read: Is a directory"}},
        {"folders and files, but no saved invitations",
         {{".calendars/a.ics", calendar},
          {"data/contacts/a.vcf", ""},
          {"team.ICS", calendar},
          {".hidden.ics", calendar},
          {"invitation.ics", "BEGIN:VCALENDAR\nMETHOD:REQUEST\nEND:VCALENDAR\n"},
          {"published.ics", "BEGIN:VCALENDAR\nMETHOD:PUBLISH\nEND:VCALENDAR\n"},
          {"Downloads/b.ics", calendar}},
         {".calendars", "data/contacts", "published.ics", "team.ICS", "? Downloads/b.ics"}}};
    for (const auto& [name, files, expected] : cases)
        EXPECT_EQ(found(files), expected) << name;
}

}  // namespace
