#include <HbrLocalization/L10n.h>

#include <Foundation/Json.h>
#include <HbrLocalization/LocalizedString.h>
#include <support/BuildResources.h>
#include <support/TestEnvironment.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <type_traits>

namespace {

using namespace hbr;

template <class Function, class... Arguments>
constexpr bool takes = std::is_invocable_v<Function, Arguments...>;

static_assert(takes<decltype(L10n::TimeFormat::in), std::string> &&
              takes<decltype(L10n::TimeFormat::in), const char*>);
static_assert(!takes<decltype(L10n::TimeFormat::in), int> && !takes<decltype(L10n::TimeFormat::in), double>);
static_assert(takes<decltype(L10n::Alert::customMinutes), int> &&
              takes<decltype(L10n::Alert::customMinutes), std::int64_t>);
static_assert(!takes<decltype(L10n::Alert::customMinutes), const char*> &&
              !takes<decltype(L10n::Alert::customMinutes), double> &&
              !takes<decltype(L10n::Alert::customMinutes), bool>);

/// Makes a changed environment the current one, a bundle of its own included.
class L10nTest : public testing::Test {
  protected:
    void useTable(const std::string& language, const std::string& content) {
        directory_.write("HbrLocalization_HbrLocalization.bundle/" + language + ".lproj/Localizable.json",
                         content);
        world_.change().resourceDirectories = {directory_.path()};
    }
    void start() { platform::Environment::setCurrent(world_.ref()); }

    test::TestEnvironment world_;
    test::TemporaryDirectory directory_;
};

TEST_F(L10nTest, TextsComeFromTheShippedTable) {
    start();
    EXPECT_EQ(L10n::TimeFormat::left("12 m"), "12 m left");
    EXPECT_EQ(L10n::TimeFormat::remaining(std::string("2 hours")), "2 hours remaining");
    EXPECT_EQ(L10n::Alert::_1minute(), "1 minute");
    EXPECT_EQ(L10n::Alert::customMinutes(5), "5 minutes");
    EXPECT_EQ(L10n::General::ok(), "OK");
    EXPECT_EQ(L10n::General::default_(), "default");
    EXPECT_EQ(L10n::Menu::upcomingEvents(), "Upcoming Events");
    EXPECT_EQ(L10n::Menu::UpcomingEvents::noEvents(), "No upcoming events");
    EXPECT_EQ(L10n::Menu::PauseAlerts::_10minutes(), "10 minutes");
    EXPECT_EQ(L10n::Ios::Event::join(), "Join");
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleAndLocation("Standup", "Room 1"), "Standup at Room 1.");
    EXPECT_EQ(L10n::openSystemPreferencesLegacy(), "Open System Preferences");
    EXPECT_EQ(L10n::About::Statistics::top(), "Heedbanner has alerted you");
    EXPECT_EQ(LocalizedStringOrNil("TimeFormat.now"), "now");
}

TEST_F(L10nTest, EnglishStandsInForWhatATableLacks) {
    useTable(
        "de",
        R"({"TimeFormat.now": "jetzt", "TimeFormat.in": "in etwa 100%% %@", "General.all": "General.all"})");
    world_.change().locale.languages = {"de-AT", "en"};
    start();
    EXPECT_EQ(L10n::TimeFormat::now(), "jetzt");
    EXPECT_EQ(L10n::TimeFormat::in("5 Min."), "in etwa 100% 5 Min.");
    EXPECT_EQ(L10n::TimeFormat::today(), "today");
    EXPECT_EQ(LocalizedString("TimeFormat.today"), "TimeFormat.today");
    EXPECT_EQ(LocalizedString("TimeFormat.today", "Localizable", "heute"), "heute");
    EXPECT_EQ(LocalizedString("TimeFormat.now", "Missing", "sofort"), "sofort");
    EXPECT_EQ(LocalizedStringOrNil("TimeFormat.today"), std::nullopt);
    EXPECT_EQ(LocalizedStringOrNil("Localizable", "TimeFormat.now"), "jetzt");
    EXPECT_EQ(LocalizedStringOrNil("General.all"), std::nullopt);
}

TEST_F(L10nTest, OldPlatformsPreferTheOldWording) {
    const std::string table = R"({"Preferences.windowTitle": "Settings", "Preferences.windowTitle_legacy":
        "Preferences", "General.all": "All", "General.on_legacy": "General.on_legacy", "General.on": "on"})";
    useTable("en", table);
    for (const auto& [version, expected] : std::vector<std::pair<platform::PlatformVersion, std::string>>{
             {{12, 9, 9}, "Preferences"}, {{13, 0, 0}, "Settings"}, {{14, 0, 0}, "Settings"}}) {
        test::TestEnvironment world;
        world.change().resourceDirectories = world_->resourceDirectories;
        world.change().platformVersion = version;
        platform::Environment::setCurrent(world.ref());
        EXPECT_EQ(L10n::Preferences::windowTitle(), expected) << version.major;
        EXPECT_EQ(L10n::General::all(), "All");
        EXPECT_EQ(LocalizedString("General.on"), "on");
    }
}

TEST_F(L10nTest, ADamagedTableIsToldOnceAndLeavesTheEnglishTexts) {
    useTable("en", R"({"General.all": )");
    start();
    EXPECT_EQ(L10n::General::all(), "All");
    EXPECT_EQ(L10n::General::on(), "on");
    ASSERT_EQ(world_.diagnostics->all().size(), 1U);
    EXPECT_EQ(world_.diagnostics->all()[0].file.filename(), "Localizable.json");
}

TEST_F(L10nTest, AMissingBundleEndsTheProcess) {
    world_.change().resourceDirectories = {directory_.path()};
    start();
    EXPECT_EXIT(L10n::General::ok(), testing::ExitedWithCode(1),
                "unable to find bundle named HbrLocalization_HbrLocalization");
}

/// "%@", "%d" and the like, in the order of their arguments.
std::string placeholdersOf(const std::string& text) {
    std::string kinds;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == '%') kinds += text[++i] == 'i' ? 'd' : text[i];
    }
    return kinds;
}

TEST_F(L10nTest, EveryShippedTableHasTheEnglishKeysAndPlaceholders) {
    const auto bundle = test::buildResources() / "HbrLocalization_HbrLocalization.bundle";
    const auto read = [](const std::filesystem::path& folder) {
        return platform::parseJson(test::readFile(folder / "Localizable.json")).value();
    };
    const auto english = read(bundle / "en.lproj");
    EXPECT_EQ(english.asObject()->size(), 386U);
    for (const auto& folder : std::filesystem::directory_iterator(bundle)) {
        const auto table = read(folder.path());
        for (const auto& [key, value] : *table.asObject()) {
            const auto* original = english.find(key);
            ASSERT_TRUE(original) << folder << key;
            EXPECT_EQ(placeholdersOf(*value.asString()), placeholdersOf(*original->asString()))
                << folder << key;
        }
    }
}

}  // namespace
