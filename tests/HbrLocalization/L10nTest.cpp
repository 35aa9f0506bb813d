#include <HbrLocalization/L10n.h>

#include <HbrLocalization/LocalizedString.h>
#include <support/BuildResources.h>
#include <support/StringTables.h>
#include <support/TestEnvironment.h>

#include <gmock/gmock.h>
#include <support/Threads.h>

#include <atomic>

namespace {

using namespace hbr;

template <class T>
concept FitsAsValue = requires(const T& value) { L10n::TimeFormat::in(value); };
template <class T>
concept FitsAsInteger = requires(T number) { L10n::Alert::customMinutes(number); };

struct WithoutDescription {};
static_assert(FitsAsValue<std::string> && FitsAsValue<const char*> && FitsAsValue<int> &&
              FitsAsValue<platform::Date> && !FitsAsValue<WithoutDescription>);
static_assert(FitsAsInteger<int> && FitsAsInteger<std::int64_t> && !FitsAsInteger<const char*> &&
              !FitsAsInteger<double> && !FitsAsInteger<bool>);

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

TEST_F(L10nTest, AValueIsInsertedByItsDescription) {
    start();
    EXPECT_EQ(L10n::TimeFormat::left("12 m"), "12 m left");
    EXPECT_EQ(L10n::TimeFormat::left(12), "12 left");
    EXPECT_EQ(L10n::TimeFormat::left(0.5), "0.5 left");
    EXPECT_EQ(L10n::TimeFormat::left(true), "true left");
    EXPECT_EQ(L10n::TimeFormat::left(platform::Date(0)), "2001-01-01 00:00:00 +0000 left");
    EXPECT_EQ(L10n::Alert::customMinutes(5), "5 minutes");
    EXPECT_EQ(LocalizedStringOrNil("TimeFormat.now"), "now");
}

TEST_F(L10nTest, EnglishReplacesWhatATableLacks) {
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

TEST_F(L10nTest, ADamagedTableIsReportedOnceAndLeavesTheEnglishTexts) {
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

TEST_F(L10nTest, TextsAreInTheLanguageThatTheUserPrefers) {
    struct Case {
        std::vector<std::string> languages;
        std::string now;
        std::string oneMore;
        std::string twoMore;
        std::string manyMore;
    };
    const Case english = {
        {"en-GB"}, "now", "1 more participant", "2 more participants", "20 more participants"};
    const Case german = {
        {"de-AT"}, "jetzt", "1 weiterer Teilnehmer", "2 weitere Teilnehmer", "20 weitere Teilnehmer"};
    const Case hebrew = {{"he-IL"}, "עכשיו", "עוד משתתף אחד", "עוד שני משתתפים", "עוד 20 משתתפים"};
    const auto preferring = [](Case expected, std::vector<std::string> languages) {
        expected.languages = std::move(languages);
        return expected;
    };
    for (const auto& expected :
         {english, german, hebrew, preferring(hebrew, {"iw"}), preferring(german, {"fr", "de", "en"}),
          preferring(english, {"en", "de"}), preferring(english, {"fr"})}) {
        test::TestEnvironment world;
        world.change().locale.languages = expected.languages;
        platform::Environment::setCurrent(world.ref());
        const auto trace = testing::PrintToString(expected.languages);
        EXPECT_EQ(L10n::TimeFormat::now(), expected.now) << trace;
        EXPECT_EQ(L10n::Alert::participantsOverflowToolTip(1), expected.oneMore) << trace;
        EXPECT_EQ(L10n::Alert::participantsOverflowToolTip(2), expected.twoMore) << trace;
        EXPECT_EQ(L10n::Alert::participantsOverflowToolTip(20), expected.manyMore) << trace;
    }
}

TEST_F(L10nTest, ATextWithANumberTakesTheFormOfItsLanguage) {
    useTable("ar", R"({"Alert.customMinutes": "%i دقيقة", "Alert.customMinutes#few": "%i دقائق",
        "Alert.customMinutes_legacy#two": "دقيقتان", "General.all#one": "x"})");
    world_.change().locale = {"ar_EG", {"ar"}};
    start();
    EXPECT_EQ(L10n::Alert::customMinutes(3), "٣ دقائق");
    EXPECT_EQ(L10n::Alert::customMinutes(11), "١١ دقيقة");
    EXPECT_EQ(L10n::Alert::customMinutes(2), "٢ دقيقة");
    EXPECT_EQ(L10n::General::all(), "All");
    test::TestEnvironment old;
    old.change().resourceDirectories = world_->resourceDirectories;
    old.change().locale = world_->locale;
    old.change().platformVersion = {12, 0, 0};
    platform::Environment::setCurrent(old.ref());
    EXPECT_EQ(L10n::Alert::customMinutes(2), "دقيقتان");
    EXPECT_EQ(L10n::Alert::customMinutes(3), "٣ دقائق");
}

TEST_F(L10nTest, TextsOfTheOtherDirectionAreIsolatedInASentence) {
    start();
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleOnly("Standup – 9:41, 5\u202Fm"),
              "Standup – 9:41, 5\u202Fm.");
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleAndLocation("פגישה", "Room 1"),
              "\u2068פגישה\u2069 at Room 1.");
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleOnly("Jour fixe مع ليلى"),
              "\u2068Jour fixe مع ليلى\u2069.");
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleOnly("\u202E12"), "\u2068\u202E12\u2069.");
    test::TestEnvironment hebrew;
    hebrew.change().locale = {"he_IL", {"he"}};
    platform::Environment::setCurrent(hebrew.ref());
    EXPECT_EQ(L10n::TimeFormat::left("5\u202Fדק׳"), "עוד 5\u202Fדק׳");
    EXPECT_EQ(L10n::TimeFormat::until("9:41"), "עד 9:41");
    EXPECT_EQ(L10n::Accessibility::EventSummary::titleAndLocation("Standup (C++)", "חדר 1"),
              "\u2068Standup (C++)\u2069, מיקום: חדר 1.");
}

TEST_F(L10nTest, TextsAreReadByThreadsAtOnce) {
    world_.change().locale.languages = {"he"};
    start();
    constexpr int threadCount = 8;
    std::atomic<int> right = 0;
    test::onThreads(threadCount, [&right](int index) {
        const int i = index + 1;
        const auto expected = i == 1   ? std::string("עוד משתתף אחד")
                              : i == 2 ? std::string("עוד שני משתתפים")
                                       : "עוד " + std::to_string(i) + " משתתפים";
        if (L10n::Alert::participantsOverflowToolTip(i) == expected) ++right;
    });
    EXPECT_EQ(right, threadCount);
}

TEST_F(L10nTest, EveryShippedTableIsComplete) {
    for (const char* name :
         {"HbrLocalization_HbrLocalization.bundle", "Companion.bundle", "HeedbannerWidgetExtension.bundle"}) {
        const auto bundle = test::buildResources() / name;
        const auto english = test::readStringTable(bundle, "en");
        const auto languages = test::languagesIn(bundle);
        EXPECT_THAT(languages, testing::IsSupersetOf({"de", "en", "he"}));
        EXPECT_EQ(languages, test::languagesIn(test::buildResources() / "Companion.bundle")) << name;
        for (const auto& language : languages) {
            test::TableExamination examination(language, test::readStringTable(bundle, language), english);
            EXPECT_THAT(examination.faults(), testing::IsEmpty()) << name;
        }
    }
}

TEST(TableExamination, FindsWhatATranslatorGotWrong) {
    const test::StringTable english = {{"a", "All"}, {"b", "%@ at %@"}, {"c", "100%%"}, {"d", "%d days"}};
    const test::StringTable good = {{"a", "ا"},       {"b", "%2$@، %1$@"}, {"c", "%%100"},
                                    {"d", "%d يوما"}, {"d#zero", "-"},     {"d#one", "يوم"},
                                    {"d#two", "%d"},  {"d#few", "%d"},     {"d#many", "%d"}};
    struct Case {
        std::string key;
        std::string text;
        std::string fault;
    };
    const std::vector<Case> cases = {
        {"a", "", "ar: a: empty"},
        {"a", "All ", "ar: a: blank at an end"},
        {"b", "%1$@ %1$@", "ar: b: other placeholders than in English"},
        {"b", "%@", "ar: b: other placeholders than in English"},
        {"c", "100 %", "ar: c: a single percent sign"},
        {"d", "%@", "ar: d: other placeholders than in English"},
        {"d#few", "-", "ar: d#few: other placeholders than in English"},
        {"d#some", "%d", "ar: d#some: no plural form of this language"},
        {"e", "E", "ar: e: unknown key"},
        {"a", "missing", "ar: a: missing"},
        {"d#two", "missing", "ar: d: no form #two"},
    };
    EXPECT_THAT(test::TableExamination("ar", good, english).faults(), testing::IsEmpty());
    for (const auto& [key, text, fault] : cases) {
        auto table = good;
        table[key] = text;
        if (text == "missing") table.erase(key);
        EXPECT_THAT(test::TableExamination("ar", table, english).faults(), testing::ElementsAre(fault));
    }
}

}  // namespace
