#include <Values/Toml.h>

#include <gtest/gtest.h>

using namespace platform;

TEST(Toml, TablesKeepTheOrderOfTheDocument) {
    TomlError error;
    auto root = parseToml(R"(zeta = 1
alpha = "é"
when = 2026-03-04T09:00:00Z
[[account]]
name = "work"
emails = ["a@example.com"]
[[account]]
name = "home"
[account.kinds]
"holidays.ics" = "holidays"
[x.y]
half = 0.5
)",
                          error);
    ASSERT_TRUE(root) << error.text;
    std::vector<std::string> keys;
    for (const auto& [key, value] : *root)
        keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"zeta", "alpha", "when", "account", "x"}));
    EXPECT_EQ(*root->find("when")->asString(), "2026-03-04T09:00:00Z");

    const std::string text = writeToml(*root);
    auto again = parseToml(text, error);
    ASSERT_TRUE(again) << text;
    EXPECT_EQ(*again, *root) << text;
    EXPECT_EQ(writeToml(*again), text);
    EXPECT_NE(text.find("[[account]]\nname = "), std::string::npos) << text;
}

TEST(Toml, AnErrorNamesItsLine) {
    const std::pair<const char*, int> cases[] = {{"a = 1\nb = \n", 2}, {"a = 1\na = 2\n", 2}, {"\n\n[x", 3}};
    for (const auto& [text, line] : cases) {
        TomlError error;
        EXPECT_FALSE(parseToml(text, error)) << text;
        EXPECT_EQ(error.line, line) << text;
        EXPECT_FALSE(error.text.empty());
    }
}
