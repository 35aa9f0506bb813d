#include "Journey.h"

#include <TimeAndText/Text.h>
#include <Values/JsonText.h>

#include <algorithm>

namespace {

/// Every page for users: README.md and docs/*.md.
std::vector<std::filesystem::path> pages(const std::string& documents) {
    std::vector<std::filesystem::path> found{std::filesystem::path(documents).parent_path() / "README.md"};
    for (const auto& entry : std::filesystem::directory_iterator(documents)) {
        if (entry.path().extension() == ".md") found.push_back(entry.path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

class Documentation : public test::Journey {
  protected:
    /// The indented lines that start one of the programs.
    static std::vector<std::string> commands(const std::filesystem::path& page) {
        std::vector<std::string> found;
        for (auto line : platform::split(test::readFile(page), "\n")) {
            if (!line.starts_with("    ")) continue;
            line.erase(0, line.find_first_not_of(' '));
            if (line.starts_with("heedbanner")) found.push_back(line);
        }
        return found;
    }
};

/// As a reader would type them, a page after the other, each with the example calendars in ~/.calendars.
TEST_F(Documentation, EveryCommandOnEveryPageWorks) {
    std::size_t tried = 0;
    variables["PATH"] = programs() + ":/usr/bin:/bin";
    for (const auto& page : pages(documents())) {
        const auto lines = commands(page);
        if (lines.empty()) continue;
        std::filesystem::remove_all(home / "config");
        std::filesystem::remove_all(home / "data");
        std::filesystem::remove_all(home / ".calendars");
        std::filesystem::copy(examples(), home / ".calendars", std::filesystem::copy_options::recursive);
        ASSERT_EQ(companion({"setup", home / ".calendars", "--email", "me@example.org"}).exitCode, 0);
        for (const auto& line : lines) {
            const auto outcome = run("/bin/bash", {"-c", "cd && " + line});
            EXPECT_EQ(outcome.exitCode, 0) << page.filename() << ": " << line << "\n" << outcome.err;
            ++tried;
            // That ends the watching.
            if (line == "heedbanner settings reset --all") {
                ASSERT_EQ(companion({"calendars", "activate", "--all"}).exitCode, 0);
            }
        }
    }
    EXPECT_GT(tried, 30u);
}

/// The table of docs/settings.md: names and defaults, in the program's order.
TEST_F(Documentation, EverySettingIsDescribedWithItsDefault) {
    std::vector<std::string> rows;
    for (const auto& line :
         platform::split(test::readFile(std::filesystem::path(documents()) / "settings.md"), "\n")) {
        const auto cells = platform::split(line, " | ");
        if (cells.size() == 4 && cells[0].starts_with("| `")) rows.push_back(cells[0] + " = " + cells[3]);
    }
    std::vector<std::string> expected;
    const auto exported = platform::parseJson(companion({"settings", "export"}).out);
    for (const auto& [name, value] : *exported->asObject()) {
        const bool isList = value.asArray();
        expected.push_back("| `" + name + "` = " + (isList ? "empty" : "`" + writeJson(value) + "`") + " |");
    }
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(companion({"settings", "list"}).out.find("Settings."), std::string::npos)
        << "a key without text";
}

}  // namespace
