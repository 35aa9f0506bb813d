#include <DesktopHost/AccountNotice.h>

#include <HbrCore/CoreFixture.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <gmock/gmock.h>

namespace {

using namespace hbr;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(AccountNotice, SaysWhyThereIsNothingToShowAndWhichAccountsFail) {
    test::CoreFixture core;
    const HeedbannerWidgetBundle bundle(core.environment,
                                        [&core]() -> CoreServices& { return core.services(); });
    const auto notice = [&] { return AccountNotice::of(core.services(), bundle); };
    const auto reread = [&] { core.services().aggregatedEventStore().refreshData(); };

    core.write("calendars/one.ics", "BEGIN:VEVENT\nUID:1\nDTSTART:20260304T100000Z\nEND:VEVENT\n");
    EXPECT_EQ(notice().title, "No calendar is watched");
    core.reloaded();
    EXPECT_EQ(notice(), AccountNotice{});

    core.account("Gone", "nowhere", false);
    reread();
    EXPECT_EQ(notice().title, std::nullopt);
    EXPECT_EQ(notice().badge, "Cannot be read: Gone");
    EXPECT_THAT(notice().problems, ElementsAre(HasSubstr("Gone: ")));

    std::filesystem::remove_all(core.environment.home / "calendars");
    reread();
    EXPECT_EQ(notice().title, "Your calendars cannot be read");
    platform::AccountsFile(core.environment).update([](auto& accounts) { accounts.clear(); });
    reread();
    EXPECT_EQ(notice().title, "No calendars yet");
    EXPECT_EQ(notice().advice, "Click to add your calendars.");
    EXPECT_EQ(notice().kind, AccountNotice::Kind::noAccounts);
}

}  // namespace
