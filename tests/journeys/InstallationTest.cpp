#include "Journey.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <regex>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

/// What the build installs below a folder that nobody chose when it was configured.
class Installation : public test::Journey {
  protected:
    void SetUp() override {
        variables["XDG_RUNTIME_DIR"] = home.path();
        // Not into the folder that a packager may have set.
        variables["DESTDIR"] = "";
        const auto installed =
            run(CMAKE, {"--install", fs::path(programs()).parent_path(), "--prefix", prefix});
        ASSERT_EQ(installed.exitCode, 0) << installed.err;
    }
    /// Those of the installed files whose path below the prefix matches.
    std::vector<fs::path> files(const std::string& pattern) const {
        std::vector<fs::path> found;
        const std::regex wanted(pattern);
        for (const auto& entry : fs::recursive_directory_iterator(prefix)) {
            if (entry.is_regular_file() &&
                std::regex_match(entry.path().lexically_relative(prefix).string(), wanted))
                found.push_back(entry.path());
        }
        return found;
    }
    /// What is in the first group, wherever the expression is found in the file.
    static std::vector<std::string> found(const fs::path& file, const std::string& expression) {
        const std::string text = test::readFile(file);
        const std::regex wanted(expression, std::regex::multiline);
        std::vector<std::string> all;
        for (std::sregex_iterator one(text.begin(), text.end(), wanted); one != std::sregex_iterator(); ++one)
            all.push_back((*one)[1]);
        return all;
    }

    const fs::path prefix = home / "chosen later";
};

TEST_F(Installation, SatisfiesTheToolsOfEachKindOfFile) {
    const struct {
        std::string files;
        std::size_t count;
        std::string tool;
        Arguments arguments;
    } kinds[] = {{"share/applications/.*", 2, "desktop-file-validate", {}},
                 {"share/metainfo/.*", 1, "appstreamcli", {"validate", "--no-net", "--pedantic", "--strict"}},
                 {"share/man/.*", 5, "mandoc", {"-T", "lint", "-W", "warning"}},
                 {"lib/systemd/user/.*", 1, "systemd-analyze", {"--user", "--man=no", "verify"}},
                 {"share/icons/.*", 2, "rsvg-convert", {"-o", home / "icon.png"}},
                 {"share/bash-completion/.*", 3, "bash", {"-n"}},
                 {"share/zsh/.*", 3, "zsh", {"-n"}},
                 {"share/fish/.*", 3, "fish", {"-n"}}};
    for (const auto& [pattern, count, tool, arguments] : kinds) {
        const auto installed = files(pattern);
        EXPECT_EQ(installed.size(), count) << pattern;
        // Not everybody has every shell, or systemd.
        if (!fs::exists("/usr/bin/" + tool)) continue;
        for (const auto& file : installed) {
            auto words = arguments;
            words.push_back(file);
            const auto outcome = run("/usr/bin/" + tool, words);
            EXPECT_EQ(outcome.exitCode, 0) << tool << " " << file << "\n" << outcome.out;
            EXPECT_EQ(outcome.err, "") << tool << " " << file;
        }
    }
}

TEST_F(Installation, StartsItsProgramsFromWhereItWasPut) {
    std::size_t starts = 0;
    for (const auto& file : files(".*\\.(desktop|service)")) {
        for (const auto& program : found(file, "^Exec(?:Start)?=\"([^\"]*)\"")) {
            EXPECT_EQ(fs::path(program).parent_path(), prefix / "bin") << file;
            EXPECT_TRUE(fs::is_regular_file(program)) << file;
            ++starts;
        }
    }
    EXPECT_EQ(starts, 5u);
    // With its texts, which lie beside it.
    const auto drawn =
        run(prefix / "bin/heedbanner-widgets", {"render", "countdown", "--demo", "--format", "text"});
    EXPECT_EQ(drawn.exitCode, 0) << drawn.err;
    EXPECT_NE(drawn.out, "");
}

TEST_F(Installation, HasOneVersionAndOneIdEverywhere) {
    const fs::path source = fs::path(documents()).parent_path();
    const std::string version =
        found(source / "CMakeLists.txt", "^project\\(heedbanner VERSION ([0-9.]+)").at(0);
    for (const char* program : {"heedbanner", "heedbanner-widgets", "heedbanner-desktop"})
        EXPECT_THAT(run(prefix / "bin" / program, {"--version"}).out, HasSubstr(" " + version + "\n"));
    for (const auto& page : files("share/man/.*"))
        EXPECT_EQ(found(page, "^\\.Os \"Heedbanner (.*)\"").at(0), version) << page;
    const fs::path metainfo = files("share/metainfo/.*").at(0);
    EXPECT_EQ(found(metainfo, "<release version=\"([^\"]*)\"").at(0), version);
    EXPECT_EQ(found(source / "CHANGELOG.md", "^## ([0-9.]+)$").at(0), version);
    EXPECT_EQ(found(source / "debian/changelog", "^heedbanner \\((.*)\\)").at(0), version);

    const std::string id = "com.quietlark.heedbanner";
    EXPECT_EQ(found(metainfo, "<id>(.*)</id>").at(0), id);
    EXPECT_EQ(found(metainfo, "<launchable type=\"desktop-id\">(.*)</launchable>").at(0), id + ".desktop");
    EXPECT_EQ(found(files("share/dbus-1/services/.*").at(0), "^Name=(.*)$").at(0), id);
    for (const auto& entry : files("share/applications/.*"))
        EXPECT_EQ(found(entry, "^Icon=(.*)$").at(0), id) << entry;
    for (const auto& file : files("(share/(applications|icons|metainfo|dbus-1)|lib/systemd)/.*"))
        EXPECT_THAT(file.filename().string(), testing::StartsWith(id));
}

}  // namespace
