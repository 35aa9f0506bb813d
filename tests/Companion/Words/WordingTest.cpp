#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/LeadText.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>

#include <gtest/gtest.h>
#include <support/TestEnvironment.h>
#include <support/WithoutIsolates.h>

namespace {

TEST(Wording, IsInTheUsersLanguage) {
    using platform::Environment;
    struct Case {
        std::function<std::string(const Environment&)> text;
        /// In English, German and Hebrew.
        const char* expected[3];
    };
    const auto title = [](std::optional<std::string> one) {
        return [one](const Environment& world) { return hbr::titleText(one, world); };
    };
    const auto lead = [](std::int64_t seconds) {
        return [seconds](const Environment& world) { return hbr::leadText(seconds, world); };
    };
    const auto count = [](std::size_t number) {
        return
            [number](const Environment& world) { return hbr::companionCount(world, "Count.files", number); };
    };
    const Case cases[] = {
        {title({}), {"(no title)", "(ohne Titel)", "(ללא כותרת)"}},
        {title(" \n"), {"(no title)", "(ohne Titel)", "(ללא כותרת)"}},
        {title("A\nB"), {"A B", "A B", "A B"}},
        {lead(0), {"at its start", "zu Beginn", "בתחילתו"}},
        {lead(5400),
         {"1h 30m before its start", "1\u202Fh 30\u202Fmin vor Beginn", "שעה, 30 דק׳ לפני תחילתו"}},
        {lead(61), {"1m 1s before its start", "1\u202Fmin 1\u202Fs vor Beginn", "דקה, שנייה לפני תחילתו"}},
        {count(1), {"1 file", "1 Datei", "קובץ אחד"}},
        {count(2), {"2 files", "2 Dateien", "שני קבצים"}},
        {count(2000), {"2,000 files", "2.000 Dateien", "2,000 קבצים"}},
        {[](const Environment& world) { return hbr::nameProposal(world, "Standpu", {"Standup", "Review"}); },
         {" (did you mean \"Standup\"?)", " (meinten Sie „Standup“?)", " (האם הכוונה הייתה \"Standup\"?)"}},
        {[](const Environment& world) { return hbr::nameProposal(world, "x", {"Standup"}); }, {"", "", ""}}};
    const char* locales[] = {"en_US", "de_DE", "he_IL"};
    for (std::size_t i = 0; i < std::size(locales); ++i) {
        const test::TestEnvironment world("2026-03-04T09:00:00Z", "Europe/Berlin", locales[i]);
        for (const Case& one : cases)
            EXPECT_EQ(test::withoutIsolates(one.text(*world.ref())), one.expected[i]) << locales[i];
    }
}

TEST(OneLine, HasNoControlsAndKeepsTheDirectionOfTheLine) {
    const std::pair<std::string, const char*> cases[] = {{"Tea", "Tea"},
                                                         {" a\r\n\tb ", "a b"},
                                                         {"\x1b[31mred\x07", "[31mred"},
                                                         {"a\u0085b\u2028c", "a b c"},
                                                         {"a\u202Egpj.exe\u2066x\u2069\u200F", "agpj.exex"},
                                                         {"עברית 🍜", "עברית 🍜"},
                                                         {std::string("nul\0l", 5), "nul l"},
                                                         {"bad\xff", "bad\uFFFD"}};
    for (const auto& [text, line] : cases)
        EXPECT_EQ(hbr::onOneLine(text), line) << text;
}

}  // namespace
