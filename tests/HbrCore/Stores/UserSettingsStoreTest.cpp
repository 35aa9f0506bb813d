#include <HbrCore/Stores/SettingsMigration.h>
#include <HbrCore/Stores/UserSettingsStore.h>
#include <gmock/gmock.h>
#include <support/TestEnvironment.h>

#include <thread>

namespace {

using namespace hbr;
using Strings = std::vector<std::string>;
using testing::ElementsAre;

class UserSettings : public testing::Test {
  protected:
    UserSettingsStore store() { return {domains, environment.diagnostics}; }

    test::TestEnvironment environment;
    DefaultsDomains domains = DefaultsDomains::of(*environment.ref());
};

TEST_F(UserSettings, AFreshInstallationHasTheDefaults) {
    const auto settings = store();
    EXPECT_EQ(settings.timeOffsetSeconds(), 60);
    EXPECT_EQ(settings.upcomingEventsDaysFilter(), 7);
    EXPECT_EQ(settings.defaultSnooze1(), 1);
    EXPECT_EQ(settings.defaultSnooze2(), 5);
    EXPECT_EQ(settings.keyboardShortcutsDelay(), 1);
    EXPECT_TRUE(settings.activeCalendarIdentifiers().empty());
    EXPECT_TRUE(settings.excludeRules().empty());
    EXPECT_FALSE(settings.showOnlyAcceptedEvents());
}

TEST_F(UserSettings, ValuesAreStoredUnderTheirKeysInTheirDomains) {
    auto settings = store();
    settings.setShowOnlyAcceptedEvents(true);
    settings.setKeyboardShortcutsDelay(3);
    settings.setActiveCalendarIdentifiers({"b", "a"});
    EXPECT_EQ(domains.shared->value("showTentativeEvents"), platform::PropertyValue(true));
    EXPECT_FALSE(domains.shared->value("showOnlyAcceptedEvents"));
    EXPECT_EQ(domains.standard->value("keyboardShortcutsDelay"), platform::PropertyValue(3));
    EXPECT_THAT(settings.activeCalendarIdentifiers(), ElementsAre("b", "a"));

    domains.shared->setValue("upcomingEventsDaysFilter", "many");
    EXPECT_EQ(settings.upcomingEventsDaysFilter(), 7);
    EXPECT_EQ(upcomingEventsDaysFilter(*domains.shared), 0);
    EXPECT_EQ(defaultSnooze1(*domains.shared), 0);

    settings.setTimeOffsetSeconds(90);
    settings.resetAll();
    EXPECT_EQ(settings.timeOffsetSeconds(), 90);
    EXPECT_EQ(settings.keyboardShortcutsDelay(), 1);
}

TEST_F(UserSettings, ExcludeRulesThatCannotBeReadAreNone) {
    auto settings = store();
    const auto rule = FilterRule::makeDefault();
    settings.setExcludeRules({rule});
    EXPECT_EQ(settings.excludeRules(), std::vector{rule});
    for (const char* block : {"no json", R"([{"id":"x"}])", "{}"}) {
        domains.shared->setValue("excludeRules", platform::dataOf(block));
        EXPECT_TRUE(settings.excludeRules().empty()) << block;
    }
}

TEST_F(UserSettings, OldSettingsAreCopiedOnce) {
    domains.standard->setValue("activeCalendarIdentifiers", platform::PropertyArray{"A"});
    domains.standard->setValue("customReminders", platform::dataOf("[]"));
    domains.shared->setValue("activeCalendarIdentifiers", platform::PropertyArray{"B"});
    domains.shared->setValue("defaultSnooze1", 9);
    EXPECT_EQ(store().activeCalendarIdentifiers(), Strings{"A"});
    EXPECT_EQ(store().defaultSnooze1(), 1);
    EXPECT_TRUE(domains.shared->value("customReminders"));
    EXPECT_EQ(domains.standard->value(didMigrateToSharedDefaultsKey), platform::PropertyValue(true));

    store().setActiveCalendarIdentifiers({"C"});
    EXPECT_EQ(store().activeCalendarIdentifiers(), Strings{"C"});
    EXPECT_TRUE(domains.standard->value("activeCalendarIdentifiers"));
}

TEST_F(UserSettings, ObsoleteMinutesBecomeSecondsThatTheCopyDoesNotLose) {
    domains.standard->setValue("timeOffset", 5);
    domains.standard->setValue("timeOffsetSeconds", 30);
    EXPECT_EQ(store().timeOffsetSeconds(), 300);
    EXPECT_FALSE(domains.standard->value("timeOffset"));

    domains.standard->setValue("timeOffset", 10);
    EXPECT_EQ(store().timeOffsetSeconds(), 600);
}

TEST_F(UserSettings, MinutesThatCannotBeConvertedStay) {
    const auto marked = [&](platform::PropertyValue minutes) {
        domains.standard->setValue(didMigrateToSharedDefaultsKey, true);
        domains.standard->setValue("timeOffset", minutes);
        EXPECT_EQ(store().timeOffsetSeconds(), 60);
        EXPECT_EQ(domains.standard->value("timeOffset"), minutes);
    };
    marked("5");
    EXPECT_TRUE(environment.diagnostics->all().empty());
    marked(std::int64_t{1} << 60);
    ASSERT_EQ(environment.diagnostics->all().size(), 1u);
    EXPECT_EQ(environment.diagnostics->all()[0].field, "timeOffset");
}

TEST_F(UserSettings, ASharedDomainFromABackupSurvivesTheFirstStart) {
    for (const char* standardFile : {"", "not a property list"}) {
        domains.shared->setValue("activeCalendarIdentifiers", platform::PropertyArray{"kept"});
        if (*standardFile) environment.home.write("config/heedbanner/com.quietlark.hbr.plist", standardFile);
        domains = DefaultsDomains::of(*environment.ref());
        markMigratedWithoutOldSettings(domains);
        EXPECT_EQ(store().activeCalendarIdentifiers(), Strings{"kept"}) << standardFile;
    }
}

TEST_F(UserSettings, FirstStartsAndWritersAtTheSameTimeCopyOnceAndLoseNothing) {
    domains.standard->setValue("activeCalendarIdentifiers", platform::PropertyArray{"old"});
    auto start = [&](std::string prefix) {
        UserSettingsStore own(DefaultsDomains::of(*environment.ref()), environment.diagnostics);
        for (int i = 0; i < 20; ++i) {
            own.updateActiveCalendarIdentifiers(
                [&](Strings& identifiers) { identifiers.push_back(prefix + std::to_string(i)); });
        }
    };
    std::thread other(start, "a");
    start("b");
    other.join();
    EXPECT_THAT(store().activeCalendarIdentifiers(),
                testing::AllOf(testing::SizeIs(41), testing::Contains("old")));
}

}  // namespace
