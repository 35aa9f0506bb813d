#include <Accounts/AccountsFile.h>

#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

#include <filesystem>
#include <thread>

namespace {

using namespace platform;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(AccountsFile, BadEntriesAreLeftOutAndABrokenFileIsSetAside) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    environment.home.write(
        "config/heedbanner/accounts.toml",
        "[[account]]\nname = \"Work\"\nlocation = \"~/cal\"\naddresses = [\"mailto:a@b.c\", \"d@e.f\"]\n"
        "kind = \"holidays\"\n[[account]]\nname = \"x\"\n[[account]]\nname = \"p\"\nlocation = \"/p\"\n"
        "contents = \"people\"\n[[account]]\nname = \"q\"\nlocation = \"/q\"\ndelegate = \"yes\"\n");
    const auto accounts = file.load();
    ASSERT_EQ(accounts.size(), 2u);
    EXPECT_EQ(accounts[0].location, environment.home / "cal");
    EXPECT_EQ(accounts[0].addresses, (std::vector<std::string>{"a@b.c", "d@e.f"}));
    EXPECT_EQ(accounts[0].kind, Account::Kind::holidays);
    std::vector<std::string> fields;
    for (const auto& diagnostic : environment.diagnostics->all())
        fields.push_back(diagnostic.field);
    EXPECT_THAT(fields, ElementsAre("account 2, location", "account 3, contents", "account 4, delegate"));

    ASSERT_TRUE(file.update([](auto& list) { list[1].isDelegate = true; }));
    EXPECT_TRUE(file.load()[1].isDelegate);
    EXPECT_EQ(std::filesystem::status(file.path()).permissions(), std::filesystem::perms(0600));

    environment.home.write("config/heedbanner/accounts.toml", "[[account\n");
    EXPECT_THAT(file.load(), IsEmpty());
    ASSERT_TRUE(file.update([](auto& list) { list.push_back({.name = "N", .location = "/n"}); }));
    EXPECT_EQ(file.load().size(), 1u);
    EXPECT_EQ(test::readFile(file.path().string() + ".unreadable-1"), "[[account\n");
}

TEST(AccountsFile, WritingKeepsWhatIsNotUnderstood) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    const std::string written =
        "# mine\nversion = 2\n\n[[account]]\nname = \"Work\"\nlocation = \"~/cal\"\nnote = \"hm\"\n\n"
        "[[account]]\nname = \"Later\"\ncontents = \"mails\"\nlocation = \"/later\"\n";
    environment.home.write("config/heedbanner/accounts.toml", written);
    const auto add = [](auto& list) {
        list.push_back({.name = "People", .location = "~/cal", .contents = Account::Contents::contacts});
    };
    ASSERT_TRUE(file.update(add));
    EXPECT_THAT(test::readFile(file.path()), testing::StartsWith(written));
    EXPECT_EQ(file.load().size(), 2u);
    ASSERT_TRUE(file.update([](auto& list) { list[0].name = "Desk"; }));
    ASSERT_TRUE(file.update([](auto& list) { list.erase(list.begin() + 1); }));
    const auto text = test::readFile(file.path());
    for (const char* kept : {"version = 2", "\"Desk\"", "note = ", "\"Later\"", "\"mails\""})
        EXPECT_THAT(text, testing::HasSubstr(kept)) << kept;
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("People")));

    environment.home.write("config/heedbanner/accounts.toml",
                           "account = [{name = \"A\", location = \"/a\"}]\n");
    ASSERT_TRUE(file.update(add));
    EXPECT_EQ(file.load().size(), 2u);
}

TEST(AccountsFile, RenamingAndRemovingKeepComments) {
    test::TestEnvironment environment;
    AccountsFile file(environment);
    environment.home.write(
        "config/heedbanner/accounts.toml",
        "# mine\n\n# old\n[[account]]\nname = \"A\"\nlocation = \"~/a\" # here\n\n"
        "[[account]]\nname = \"B\"\n\n# new\n[[account]]\nname = \"C\"\nlocation = \"/c\"\n");
    ASSERT_TRUE(file.update([](auto& list) {
        list[0].name = "Z";
        list[0].addresses = {"me@example.org"};
        list.erase(list.begin() + 1);
        list.push_back({.name = "D", .location = "/d"});
    }));
    EXPECT_EQ(test::readFile(file.path()),
              "# mine\n\n# old\n[[account]]\nname = \"Z\"\nlocation = \"~/a\" # here\n"
              "addresses = [ \"me@example.org\" ]\n\n[[account]]\nname = \"B\"\n\n"
              "[[account]]\nname = \"D\"\nlocation = \"/d\"\n");
    environment.home.write("config/heedbanner/accounts.toml",
                           "[[account]]\nname = \"A\"\nlocation = \"/a\"\n");
    ASSERT_TRUE(file.update([](auto& list) { list.clear(); }));
    EXPECT_FALSE(std::filesystem::exists(file.path()));
}

TEST(AccountsFile, WritersNeverLoseEachOthersAccounts) {
    test::TestEnvironment environment;
    {
        std::vector<std::jthread> writers;
        for (int t = 0; t < 4; ++t) {
            writers.emplace_back([&, t] {
                for (int i = 0; i < 5; ++i) {
                    AccountsFile(environment).update([&](auto& accounts) {
                        accounts.push_back({.name = std::to_string(t * 5 + i), .location = "/x"});
                    });
                }
            });
        }
    }
    EXPECT_EQ(AccountsFile(environment).load().size(), 20u);
}

}  // namespace
