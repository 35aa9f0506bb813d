#include <System/Environment.h>
#include <System/ResourceBundle.h>

#include <gtest/gtest.h>
#include <support/TemporaryDirectory.h>

#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

using namespace platform;

namespace {

using Variables = std::map<std::string, std::string>;

/// What `describeIt` says of the environment of a process with these variables and no others.
template <class Describe>
std::string inWorld(const Variables& variables, Describe describeIt,
                    const std::filesystem::path& program = "/opt/thing/bin/program") {
    int ends[2];
    if (pipe(ends) != 0) return "no pipe";
    pid_t child = fork();
    if (child == 0) {
        clearenv();
        for (const auto& [name, value] : variables)
            setenv(name.c_str(), value.c_str(), 1);
        std::string text = describeIt(*Environment::fromProcess("thing", program, {"/build/resources"}));
        _exit(write(ends[1], text.data(), text.size()) == static_cast<ssize_t>(text.size()) ? 0 : 1);
    }
    close(ends[1]);
    std::string text;
    char buffer[4096];
    for (ssize_t count; (count = read(ends[0], buffer, sizeof buffer)) > 0;)
        text.append(buffer, static_cast<std::size_t>(count));
    close(ends[0]);
    waitpid(child, nullptr, 0);
    return text;
}

}  // namespace

TEST(Environment, LanguagesAndFormatsFollowTheirOwnVariables) {
    auto locale = [](const Environment& environment) {
        std::string text = environment.locale.identifier + " |";
        for (const std::string& language : environment.locale.languages)
            text += " " + language;
        return text;
    };
    const std::pair<Variables, const char*> cases[] = {
        {{}, "en_US | en-US"},
        {{{"LANG", "C.UTF-8"}}, "en_US | en-US"},
        {{{"LC_ALL", "POSIX"}, {"LANG", "de_DE.UTF-8"}}, "en_US | en-US"},
        {{{"LANG", "de_AT.UTF-8@euro"}}, "de_AT | de-AT"},
        {{{"LANG", "de_DE"}, {"LC_TIME", "en_GB.UTF-8"}}, "en_GB | de-DE"},
        {{{"LANG", "de_DE"}, {"LC_MESSAGES", "fr_FR"}}, "de_DE | fr-FR"},
        {{{"LANG", "de_DE"}, {"LC_ALL", ""}, {"LANGUAGE", "pt_BR:pt:en"}}, "de_DE | pt-BR pt en"},
        {{{"LC_ALL", "fr_CA"}, {"LC_TIME", "en_GB"}, {"LANGUAGE", ":"}}, "fr_CA | fr-CA"},
        {{{"LANG", "sr_RS@latin"}}, "sr_Latn_RS | sr-Latn-RS"},
    };
    for (const auto& [variables, expected] : cases)
        EXPECT_EQ(inWorld(variables, locale), expected);
}

TEST(Environment, TheDesktopsClockDecidesTheHoursUnlessLcAllDoes) {
    test::TemporaryDirectory folder;
    folder.write("schemas/interface.gschema.xml", R"(<schemalist>
        <enum id="format"><value nick="24h" value="0"/><value nick="12h" value="1"/></enum>
        <schema id="org.gnome.desktop.interface" path="/org/gnome/desktop/interface/">
          <key name="clock-format" enum="format"><default>'24h'</default></key>
        </schema></schemalist>)");
    const std::string compile = "glib-compile-schemas " + (folder / "schemas").string();
    ASSERT_EQ(std::system(compile.c_str()), 0);
    folder.write("none/.keep", "");
    folder.write("twelve/glib-2.0/settings/keyfile", "[org/gnome/desktop/interface]\nclock-format='12h'\n");
    folder.write("twentyfour/glib-2.0/settings/keyfile",
                 "[org/gnome/desktop/interface]\nclock-format='24h'\n");

    const std::tuple<const char*, const char*, Variables, const char*> cases[] = {
        {"ubuntu:GNOME", "twelve", {{"LANG", "de_DE"}}, "de_DE@hours=h12"},
        {"GNOME", "twentyfour", {{"LC_TIME", "en_US.UTF-8"}}, "en_US@hours=h23"},
        {"GNOME", "none", {{"LANG", "en_US"}}, "en_US"},
        {"GNOME", "twelve", {{"LC_ALL", "de_DE"}}, "de_DE"},
        {"KDE", "twelve", {{"LANG", "de_DE"}}, "de_DE"},
    };
    for (const auto& [desktop, choice, ownVariables, identifier] : cases) {
        Variables variables = ownVariables;
        variables.insert({{"XDG_CURRENT_DESKTOP", desktop},
                          {"XDG_CONFIG_HOME", (folder / choice).string()},
                          {"GSETTINGS_BACKEND", "keyfile"},
                          {"GSETTINGS_SCHEMA_DIR", (folder / "schemas").string()}});
        EXPECT_EQ(inWorld(variables, [](const Environment& e) { return e.locale.identifier; }), identifier)
            << desktop << " " << choice;
    }
    // Without the schema GLib would end the process.
    EXPECT_EQ(inWorld({{"XDG_CURRENT_DESKTOP", "GNOME"}, {"XDG_DATA_DIRS", "/nowhere"}, {"LANG", "fr_FR"}},
                      [](const Environment& e) { return e.locale.identifier; }),
              "fr_FR");
}

TEST(Environment, TheZoneIsTheOneThatTzNames) {
    auto offset = [](const Environment& environment) {
        const TimeZone& zone = environment.calendar.timeZone();
        auto summer = parseRfc3339("2026-07-01T00:00:00Z").value();
        return zone.name() + " " + std::to_string(zone.offsetAt(summer));
    };
    const std::pair<const char*, const char*> cases[] = {
        {"Europe/Berlin", "Europe/Berlin 7200"},
        {":Europe/Berlin", "Europe/Berlin 7200"},
        {"/usr/share/zoneinfo/Asia/Kolkata", "Asia/Kolkata 19800"},
        {":/usr/share/zoneinfo/Asia/Kolkata", "Asia/Kolkata 19800"},
        {"CET-1CEST,M3.5.0,M10.5.0/3", "CET-1CEST,M3.5.0,M10.5.0/3 7200"},
        {"", "UTC 0"},
        {"UTC", "UTC 0"},
    };
    for (const auto& [tz, expected] : cases)
        EXPECT_EQ(inWorld({{"TZ", tz}}, offset), expected) << tz;
    auto diagnostics = [](const Environment& environment) {
        auto all = std::dynamic_pointer_cast<CollectedDiagnostics>(environment.diagnostics)->all();
        return all.empty() ? "" : describe(all.front());
    };
    EXPECT_NE(inWorld({{"TZ", "Nowhere/Land"}}, diagnostics).find("\"Nowhere/Land\""), std::string::npos);
    EXPECT_EQ(inWorld({{"TZ", "Asia/Kolkata"}}, diagnostics), "");
}

TEST(Environment, FoldersFollowTheXdgVariables) {
    auto folders = [](const Environment& environment) {
        return environment.configDirectory.string() + " " + environment.dataDirectory.string() + " " +
               environment.cacheDirectory.string();
    };
    EXPECT_EQ(inWorld({{"HOME", "/h"}}, folders), "/h/.config/thing /h/.local/share/thing /h/.cache/thing");
    EXPECT_EQ(inWorld({{"HOME", "/h"},
                       {"XDG_CONFIG_HOME", "/c"},
                       {"XDG_DATA_HOME", "relative"},
                       {"XDG_CACHE_HOME", ""}},
                      folders),
              "/c/thing /h/.local/share/thing /h/.cache/thing");
    auto resources = [](const Environment& environment) {
        std::string text;
        for (const auto& each : environment.resourceDirectories)
            text += each.string() + " ";
        return text;
    };
    EXPECT_EQ(inWorld({{"THING_RESOURCES", "/r"}}, resources),
              "/r /opt/thing/share/thing /build/resources /opt/thing/bin ");
}

TEST(ResourceBundle, TheFirstFolderThatHasTheNameWins) {
    test::TemporaryDirectory folder;
    Environment environment;
    environment.resourceDirectories = {folder / "absent", folder / "a", folder / "b"};
    folder.write("a/other", "");
    folder.write("b/strings.bundle/x", "");
    EXPECT_EQ(findResource(environment, "strings.bundle"), folder / "b/strings.bundle");
    folder.write("a/strings.bundle/x", "");
    EXPECT_EQ(findResource(environment, "strings.bundle"), folder / "a/strings.bundle");
    EXPECT_FALSE(findResource(environment, "nothing"));
}
