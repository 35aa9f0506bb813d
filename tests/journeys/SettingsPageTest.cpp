#include "Journey.h"

#include <TimeAndText/Text.h>
#include <Values/JsonText.h>
#include <gmock/gmock.h>

namespace {

using ::test::Journey;

class SettingsPage : public Journey {
  protected:
    /// Cells of the rows whose first cell is a name in backticks and that have as many cells.
    static std::vector<std::vector<std::string>> rows(std::size_t cells) {
        std::vector<std::vector<std::string>> found;
        for (const auto& line : platform::split(test::readFile(documents() + "/settings.md"), "\n")) {
            auto row = platform::split(line, " | ");
            if (row.size() != cells || !row[0].starts_with("| `")) continue;
            row.front() = row.front().substr(3, row.front().size() - 4);
            row.back() = row.back().substr(0, row.back().size() - 2);
            found.push_back(row);
        }
        return found;
    }
};

TEST_F(SettingsPage, NamesEverySettingWithItsDefault) {
    const auto defaults = json(companion({"settings", "export"}));
    ASSERT_TRUE(defaults.asObject());
    std::vector<std::pair<std::string, std::string>> expected;
    for (const auto& [name, value] : *defaults.asObject()) {
        const bool isEmptyList = value.asArray() && value.asArray()->empty();
        expected.emplace_back(name, isEmptyList ? "empty" : "`" + writeJson(value) + "`");
    }
    std::vector<std::pair<std::string, std::string>> written;
    for (const auto& row : rows(4))
        written.emplace_back(row[0], row[3]);
    EXPECT_EQ(written, expected);
}

TEST_F(SettingsPage, NamesTheBoundsThatAreKept) {
    int checked = 0;
    for (const auto& row : rows(4)) {
        int first = 0;
        int last = 0;
        if (std::sscanf(row[2].c_str(), "%d to %d", &first, &last) != 2) continue;
        ++checked;
        for (const int value : {first, last})
            EXPECT_EQ(companion({"settings", "set", row[0], std::to_string(value)}).exitCode, 0) << row[0];
        for (const int value : {first - 1, last + 1}) {
            const auto refused = companion({"settings", "set", "--", row[0], std::to_string(value)});
            EXPECT_EQ(refused.exitCode, 2) << row[0];
            EXPECT_THAT(refused.err, ::testing::HasSubstr(row[0] + " takes"));
        }
    }
    EXPECT_EQ(checked, 6);
}

}  // namespace
