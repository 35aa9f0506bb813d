#include <HbrCore/Events/FilterRule.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <gtest/gtest.h>
#include <support/TestEnvironment.h>

namespace {

using namespace hbr;
using Comparison = FilterRule::ComparisonOperation;
using Field = FilterRule::Field;

const platform::Calendar berlin(platform::TimeZone::named("Europe/Berlin").value());

FilterRule rule(Field field, Comparison comparison, std::string value, bool isCaseSensitive = true) {
    return {.id = platform::Uuid::random(),
            .field = field,
            .comparison = comparison,
            .value = std::move(value),
            .isCaseSensitive = isCaseSensitive};
}

TEST(FilterRule, TextsAreComparedByTheRule) {
    struct Case {
        const char* title;
        Comparison comparison;
        const char* value;
        bool isCaseSensitive;
        bool expected;
    };
    const Case cases[] = {{"Team Sync", Comparison::contains, "sync", false, true},
                          {"Team Sync", Comparison::contains, "sync", true, false},
                          {"Team Sync", Comparison::contains, "", true, false},
                          {"Team Sync", Comparison::beginsWith, "Team", true, true},
                          {"Team Sync", Comparison::endsWith, "Sync", true, true},
                          {"Team Sync", Comparison::endsWith, "Team", true, false},
                          {"Caf\u00e9", Comparison::equals, "Cafe\u0301", true, true},
                          {"Cafe\u0301", Comparison::contains, "\u00e9", true, true},
                          {"x\u0302y", Comparison::contains, "x", true, false},
                          {"x\u0302y", Comparison::beginsWith, "x", true, false},
                          {"Standup", Comparison::matches, "Stand*", true, true},
                          {"Stand", Comparison::matches, "Stand*", true, true},
                          {"Daily Standup", Comparison::matches, "Stand*", true, false},
                          {"Standup", Comparison::matches, "stand*", true, false},
                          {"Standup", Comparison::matches, "stand*", false, true},
                          {"1:1", Comparison::matches, "1?1", true, true},
                          {"axb", Comparison::matches, "a.b", true, true},
                          {"(", Comparison::matches, "(", true, false},
                          {"🦊🦊 our meeting", Comparison::matches, "*meeting", true, true},
                          {"4", Comparison::isOnDayOfWeek, "4", true, false}};
    for (const Case& c : cases) {
        platform::EKEvent event;
        event.title = c.title;
        EXPECT_EQ(matches(event, rule(Field::title, c.comparison, c.value, c.isCaseSensitive), berlin),
                  c.expected)
            << c.title << " / " << c.value;
    }
    platform::EKEvent withoutNotes;
    EXPECT_FALSE(matches(withoutNotes, rule(Field::notes, Comparison::matches, "*"), berlin));
}

TEST(FilterRule, WildcardPatternsAndLettersWithMarksAreFoundInLongTexts) {
    constexpr std::size_t length = 100'000;
    const std::string run(length, 'a');
    std::string marked;
    for (std::size_t i = 0; i < length / 3; ++i)
        marked += "x\u0302";
    const auto hits = [&](const std::string& notes, Comparison comparison, const char* value,
                          bool isCaseSensitive = true) {
        platform::EKEvent event;
        event.notes = notes;
        return matches(event, rule(Field::notes, comparison, value, isCaseSensitive), berlin);
    };
    EXPECT_FALSE(hits(run, Comparison::matches, "*a*a*a*a*b"));
    EXPECT_TRUE(hits(run + "b", Comparison::matches, "*a*a*a*a*b"));
    EXPECT_TRUE(hits(run + "B", Comparison::matches, "?*A*a*a*a*b", false));
    // Searched from the right, the last "x" would be tried with every choice of four letters first.
    EXPECT_TRUE(
        hits("xaaaaz"
             "x" +
                 run,
             Comparison::matches, "*x*a*a*a*a*z*x*"));
    EXPECT_FALSE(hits(run + "\nb", Comparison::matches, "*b"));
    EXPECT_TRUE(hits(run + "\n", Comparison::matches, "a*a"));
    EXPECT_TRUE(hits("Gro\u00DF und gro\u00DF", Comparison::matches, "gross*gross", false));
    // A pattern of the user's own making that runs away is given up.
    EXPECT_FALSE(hits(run, Comparison::matches, "(a+)+b"));
    EXPECT_FALSE(hits(marked, Comparison::contains, "x"));
    EXPECT_TRUE(hits(marked + "x", Comparison::contains, "x"));
}

TEST(FilterRule, DaysOfTheWeekAreThoseOfTheUsersZone) {
    // Sunday in Berlin, Saturday in UTC.
    platform::EKEvent event;
    event.startDate = test::at("2026-03-07T23:30:00Z");
    platform::EKReminder task;
    task.dueDate = event.startDate;
    const std::pair<const char*, bool> cases[] = {{"1", true},   {" 1 , 7", true}, {"7", false},
                                                  {"+1", true},  {"x,8", false},   {",,1", true},
                                                  {"1a", false}, {"", false}};
    for (const auto& [days, expected] : cases) {
        EXPECT_EQ(matches(event, rule(Field::date, Comparison::isOnDayOfWeek, days), berlin), expected)
            << days;
        EXPECT_EQ(matches(task, rule(Field::date, Comparison::isOnDayOfWeek, days), berlin), expected)
            << days;
    }
    EXPECT_FALSE(matches(event, rule(Field::date, Comparison::contains, "1"), berlin));
}

TEST(FilterRule, AListIsKeptOrDroppedByItsRules) {
    auto titled = [](const char* title) {
        auto event = std::make_shared<platform::EKEvent>();
        event->title = title;
        return platform::EKEventRef(event);
    };
    const std::vector<platform::EKEventRef> events = {titled("a"), titled("b"), titled("c")};
    const std::vector<FilterRule> rules = {rule(Field::title, Comparison::equals, "b")};
    EXPECT_EQ(filteredApplyingRules(events, rules, true, berlin), (std::vector{events[0], events[2]}));
    EXPECT_EQ(filteredApplyingRules(events, rules, false, berlin), std::vector{events[1]});
    EXPECT_EQ(filteredApplyingRules(events, {}, true, berlin), events);
    EXPECT_TRUE(filteredApplyingRules(events, {}, false, berlin).empty());
}

TEST(FilterRule, StoredRecordsReadBackOrAreRefusedAsAWhole) {
    const auto written = rule(Field::location, Comparison::endsWith, "\"x\"", false);
    EXPECT_EQ(decodeJsonData<std::vector<FilterRule>>(encodeJsonData(std::vector{written})),
              std::vector{written});

    const std::string id = R"("id":"0F0E0D0C-0B0A-0908-0706-050403020100")";
    auto decode = [&](const std::string& rest) {
        return decodeJsonData<FilterRule>(platform::dataOf("{" + id + "," + rest + "}"));
    };
    EXPECT_TRUE(decode(R"("field":"title","comparison":"contains","value":"v")").isCaseSensitive);
    EXPECT_TRUE(
        decode(R"("field":"title","comparison":"contains","value":"v","isCaseSensitive":0)").isCaseSensitive);
    EXPECT_THROW(decode(R"("field":"title","comparison":"startsWith","value":"v")"), platform::DecodingError);
    EXPECT_THROW(decode(R"("field":"title","comparison":"contains")"), platform::DecodingError);
}

}  // namespace
