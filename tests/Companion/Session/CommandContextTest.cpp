#include <Session/CommandContext.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace hbr {
namespace {

/// What a command that needs calendars ends with; "" when it goes on.
std::string refusal(const std::string& accounts) {
    const test::TestEnvironment world;
    world.home.write("calendars/a.ics", "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n");
    if (!accounts.empty()) world.home.write("config/heedbanner/accounts.toml", accounts);
    CommandContext context(world, Console(false), {}, {});
    try {
        context.requireReadableAccounts();
    } catch (const CommandFailure& failure) {
        return std::to_string(static_cast<int>(failure.code)) + " " + failure.what();
    }
    return {};
}

TEST(CommandContext, NeedsOneAccountThatCanBeRead) {
    const std::string readable = "[[account]]\nname = \"Home\"\nlocation = \"~/calendars\"\n";
    const std::string missing = "[[account]]\nname = \"Work\"\nlocation = \"~/missing\"\n";
    EXPECT_EQ(refusal(readable), "");
    EXPECT_EQ(refusal(missing + readable), "");
    EXPECT_TRUE(refusal("").starts_with("3 ")) << refusal("");
    const std::string failed = refusal(missing);
    EXPECT_TRUE(failed.starts_with("1 ") && failed.find("Work: ") != std::string::npos) << failed;
}

}  // namespace
}  // namespace hbr
