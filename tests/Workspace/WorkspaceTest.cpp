#include <Workspace/Workspace.h>

#include <support/TemporaryDirectory.h>
#include <support/Threads.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

/// A desktop of its own: its only program writes the URL it is given into a file. GIO reads the folders of
/// the process's first question, so every test here shares them.
class DesktopWorkspaceTest : public testing::Test {
  protected:
    static void SetUpTestSuite() {
        home = new test::TemporaryDirectory;
        const auto program = home->write("handler.sh",
                                         "#!/bin/sh\nprintf '%s' \"$1\" > \"$0.part\"\n"
                                         "mv \"$0.part\" \"$0.opened\"\n");
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        home->write("data/applications/handler.desktop",
                    "[Desktop Entry]\nType=Application\nName=Call Program\nExec=" + program.string() +
                        " %u\nMimeType=x-scheme-handler/hbrcall;\n");
        home->write("config/mimeapps.list",
                    "[Default Applications]\nx-scheme-handler/hbrcall=handler.desktop\n");
        setenv("XDG_DATA_HOME", (*home / "data").c_str(), 1);
        setenv("XDG_CONFIG_HOME", (*home / "config").c_str(), 1);
        setenv("XDG_DATA_DIRS", (*home / "none").c_str(), 1);
        setenv("XDG_CONFIG_DIRS", (*home / "none").c_str(), 1);
        unsetenv("DBUS_SESSION_BUS_ADDRESS");
    }
    static void TearDownTestSuite() { delete home; }

    static std::string openedUrl() {
        std::string url;
        test::eventually([&] { return !(url = test::readFile(*home / "handler.sh.opened")).empty(); });
        return url;
    }

    static inline test::TemporaryDirectory* home = nullptr;
};

TEST_F(DesktopWorkspaceTest, HandsTheUrlToTheProgramAsItIs) {
    const std::string url = "hbrcall://zoom.us/join?confno=1&pwd=$(touch%20x);%27`id`|x";
    const auto workspace = platform::Workspace::shared();
    const auto parsed = platform::Url::parse(url).value();
    EXPECT_EQ(workspace->programForScheme("hbrcall"), "Call Program");
    EXPECT_EQ(workspace->open(parsed), std::nullopt);
    EXPECT_EQ(openedUrl(), parsed.absoluteString());
}

TEST_F(DesktopWorkspaceTest, SaysThatNoProgramOpensAScheme) {
    const auto workspace = platform::Workspace::shared();
    EXPECT_EQ(workspace->programForScheme("hbrnothing"), std::nullopt);
    const auto failure = workspace->open(platform::Url::parse("hbrnothing://x").value());
    EXPECT_TRUE(failure.value().starts_with("hbrnothing://x: ")) << *failure;
}

}  // namespace
