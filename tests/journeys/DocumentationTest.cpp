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

/// The table of docs/settings.md: names, bounds and defaults, in the program's order.
TEST_F(Documentation, EverySettingIsDescribedWithItsDefaultAndTheBoundsThatAreKept) {
    std::vector<std::string> rows;
    int bounded = 0;
    const auto exported = platform::parseJson(companion({"settings", "export"}).out);
    for (const auto& line :
         platform::split(test::readFile(std::filesystem::path(documents()) / "settings.md"), "\n")) {
        const auto cells = platform::split(line, " | ");
        if (cells.size() != 4 || !cells[0].starts_with("| `")) continue;
        rows.push_back(cells[0] + " = " + cells[3]);
        const std::string name = cells[0].substr(3, cells[0].size() - 4);
        int first = 0;
        int last = 0;
        if (std::sscanf(cells[2].c_str(), "%d to %d", &first, &last) != 2) continue;
        ++bounded;
        for (const int value : {first - 1, first, last, last + 1}) {
            const auto outcome = companion({"settings", "set", "--", name, std::to_string(value)});
            const bool isValid = value >= first && value <= last;
            EXPECT_EQ(outcome.exitCode, isValid ? 0 : 2) << name << " " << value;
            EXPECT_EQ(outcome.err.find(name + " takes") == std::string::npos, isValid) << outcome.err;
        }
    }
    std::vector<std::string> expected;
    for (const auto& [name, value] : *exported->asObject()) {
        const bool isList = value.asArray();
        expected.push_back("| `" + name + "` = " + (isList ? "empty" : "`" + writeJson(value) + "`") + " |");
    }
    EXPECT_EQ(rows, expected);
    EXPECT_EQ(bounded, 6);
    EXPECT_EQ(companion({"settings", "list"}).out.find("Settings."), std::string::npos)
        << "a key without text";
}

}  // namespace
