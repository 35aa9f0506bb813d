#include "RuleExpansion.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdio>

namespace platform {
namespace {

std::string text(std::int64_t seconds, bool withTime) {
    const auto t = localTimeOf(seconds);
    char buffer[32];
    if (withTime) {
        std::snprintf(buffer, sizeof buffer, "%04d%02d%02dT%02d%02d", t.year, t.month, t.day, t.hour,
                      t.minute);
    } else {
        std::snprintf(buffer, sizeof buffer, "%04d%02d%02d", t.year, t.month, t.day);
    }
    return buffer;
}

/// The first `count` instances from `from` on, separated by blanks.
std::string instances(std::string_view rule, std::string_view start, std::size_t count,
                      std::string_view from = "19000101", bool withTime = false) {
    std::string problem;
    const auto parsed = RecurrenceRule::parse(rule, problem);
    if (!parsed) return problem;
    std::string result;
    std::size_t found = 0;
    RuleExpansion(*parsed, parseWrittenTime(start)->local, start.size() == 8)
        .visit(secondsOf(parseWrittenTime(from)->local), secondsOf({2300, 1, 1}), [&](std::int64_t instance) {
            result += (result.empty() ? "" : " ") + text(instance, withTime);
            return ++found < count;
        });
    return result;
}

TEST(RuleExpansion, DaysOfEachKindOfRule) {
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"FREQ=DAILY;INTERVAL=10", "20260225", "20260225 20260307 20260317"},
        {"FREQ=DAILY;BYMONTH=1;BYDAY=MO", "20260105", "20260105 20260112 20260119 20260126 20270104"},
        {"FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,SU;WKST=MO", "19970805", "19970805 19970810 19970819 19970824"},
        {"FREQ=WEEKLY;INTERVAL=2;BYDAY=TU,SU;WKST=SU", "19970805", "19970805 19970817 19970819 19970831"},
        {"FREQ=MONTHLY", "20260131", "20260131 20260331 20260531 20260731"},
        {"FREQ=MONTHLY;BYMONTHDAY=-1", "20260131", "20260131 20260228 20260331"},
        {"FREQ=MONTHLY;BYMONTHDAY=31,-31", "20260101", "20260101 20260131 20260301 20260331"},
        {"FREQ=MONTHLY;BYDAY=FR;BYMONTHDAY=13", "19980213", "19980213 19980313 19981113 19990813 20001013"},
        {"FREQ=MONTHLY;BYDAY=1SU,-1SU;INTERVAL=2", "19970907", "19970907 19970928 19971102 19971130"},
        {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1", "20260130", "20260130 20260227 20260331"},
        {"FREQ=MONTHLY;BYDAY=TU,WE,TH;BYSETPOS=3,-2", "19970904", "19970904 19970925 19971007 19971029"},
        {"FREQ=MONTHLY;BYDAY=5MO", "20260330", "20260330 20260629 20260831"},
        {"FREQ=YEARLY", "20240229", "20240229 20280229 20320229"},
        {"FREQ=YEARLY;BYMONTH=1,2;INTERVAL=2", "19970110", "19970110 19970210 19990110 19990210"},
        {"FREQ=YEARLY;BYDAY=20MO", "19970519", "19970519 19980518 19990517"},
        {"FREQ=YEARLY;BYDAY=-1SU;BYMONTH=10", "20251026", "20251026 20261025 20271031"},
        {"FREQ=YEARLY;BYYEARDAY=1,100,-1", "19970101", "19970101 19970410 19971231 19980101"},
        {"FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO", "19970512", "19970512 19980511 19990517"},
        {"FREQ=YEARLY;BYWEEKNO=53", "20201228", "20201228 20261228 20321227"},
        {"FREQ=YEARLY;BYWEEKNO=1;BYDAY=MO", "20250106", "20251229 20270104 20280103"},
        {"FREQ=YEARLY;INTERVAL=4;BYMONTH=11;BYDAY=TU;BYMONTHDAY=2,3,4,5,6,7,8", "19961105",
         "19961105 20001107 20041102"},
        // Shapes that other expansions get wrong, worked out by hand.
        {"FREQ=YEARLY;BYMONTHDAY=15", "20261115", "20261115 20261215 20270115 20270215"},
        {"FREQ=YEARLY;BYMONTH=3,9;BYYEARDAY=-280,-12", "20170327", "20170327 20180327 20190327 20200327"},
        {"FREQ=YEARLY;BYMONTH=5;BYYEARDAY=132;BYDAY=TH", "20110512", "20110512 20220512"},
        {"FREQ=YEARLY;BYWEEKNO=-1;BYDAY=FR,SU", "20101231", "20101231 20110102 20111230 20120101 20121228"},
        {"FREQ=YEARLY;BYWEEKNO=52;BYDAY=FR,SA", "20101231", "20101231 20110101 20111230 20111231 20121228"},
        {"FREQ=YEARLY;BYMONTH=12;BYWEEKNO=53;BYDAY=TU", "20151229", "20151229 20201229 20261229"},
        {"FREQ=DAILY;BYMONTHDAY=-31,-10", "20110122", "20110122 20110219 20110301 20110322 20110421"},
        {"FREQ=WEEKLY;BYDAY=SA,SU;BYSETPOS=2", "20230521", "20230521 20230528 20230604"},
        {"FREQ=WEEKLY;INTERVAL=2;WKST=SA;BYDAY=FR,SU", "20110708", "20110708 20110717 20110722 20110731"},
        {"FREQ=WEEKLY;BYDAY=WE,TU,WE", "20260303", "20260303 20260304 20260310 20260311"},
        {"FREQ=MONTHLY;BYMONTHDAY=-27,4,12;BYSETPOS=-2", "19980904", "19980904 19981005 19981104"},
        {"freq=weekly;byday=we;x-foo=1;", "20260304", "20260304 20260311"},
        {"FREQ=WEEKLY;BYDAY=", "20260304", "20260304 20260311"}};
    for (const auto& [rule, start, expected] : cases) {
        const auto wanted = std::string(expected);
        const auto count = static_cast<std::size_t>(std::count(wanted.begin(), wanted.end(), ' ')) + 1;
        EXPECT_EQ(instances(rule, start, count), wanted) << rule;
    }
}

TEST(RuleExpansion, TimesOfDay) {
    EXPECT_EQ(instances("FREQ=HOURLY;INTERVAL=3", "20260304T2200", 3, "19000101", true),
              "20260304T2200 20260305T0100 20260305T0400");
    EXPECT_EQ(instances("FREQ=DAILY;BYHOUR=9,17;BYMINUTE=0,30", "20260304T0900", 5, "19000101", true),
              "20260304T0900 20260304T0930 20260304T1700 20260304T1730 20260305T0900");
    EXPECT_EQ(instances("FREQ=MINUTELY;INTERVAL=20;BYHOUR=9,10", "20260304T0940", 4, "19000101", true),
              "20260304T0940 20260304T1000 20260304T1020 20260304T1040");
    EXPECT_EQ(instances("FREQ=HOURLY;BYDAY=MO;BYHOUR=8", "20260304T0800", 2, "19000101", true),
              "20260309T0800 20260316T0800");
    EXPECT_EQ(instances("FREQ=HOURLY;BYHOUR=11,13", "20260304T1330", 3, "19000101", true),
              "20260304T1330 20260305T1130 20260305T1330");
    EXPECT_EQ(instances("FREQ=DAILY;BYMINUTE=53,7,39;BYSETPOS=-1", "20260304T0953", 2, "19000101", true),
              "20260304T0953 20260305T0953");
    EXPECT_EQ(instances("FREQ=DAILY;BYHOUR=9,10", "20260304", 2), "20260304 20260305")
        << "an all-day event knows no hours";
}

TEST(RuleExpansion, RulesThatYieldNothingEndSoon) {
    for (const auto* rule :
         {"FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30", "FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30",
          "FREQ=MONTHLY;BYDAY=5MO;BYMONTHDAY=1", "FREQ=YEARLY;BYWEEKNO=53;BYMONTH=6",
          "FREQ=DAILY;BYMONTH=4;BYMONTHDAY=31", "FREQ=YEARLY;INTERVAL=4;BYMONTH=2;BYMONTHDAY=29"}) {
        std::string problem;
        const RuleExpansion expansion(*RecurrenceRule::parse(rule, problem), {2001, 1, 1, 9, 0, 0}, false);
        std::int64_t steps = 1;
        EXPECT_FALSE(expansion.yieldsAnything(steps)) << rule;
        EXPECT_LE(steps, 0) << "the search costs";
        EXPECT_TRUE(expansion.yieldsAnything(steps)) << "nothing is left for a search";
    }
    std::string problem;
    const RuleExpansion leap(*RecurrenceRule::parse("FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=29", problem),
                             {2024, 2, 29}, true);
    std::int64_t steps = 10'000;
    EXPECT_TRUE(leap.yieldsAnything(steps));
    EXPECT_GT(steps, 0);
}

TEST(RuleExpansion, ARuleOfSecondsIsStopped) {
    std::string problem;
    const RuleExpansion expansion(*RecurrenceRule::parse("FREQ=SECONDLY", problem), {2001, 1, 1}, false);
    int seen = 0;
    const auto outcome = expansion.visit(secondsOf({2026, 1, 1}), secondsOf({2027, 1, 1}), [&](std::int64_t) {
        ++seen;
        return true;
    });
    EXPECT_EQ(outcome, RuleExpansion::Outcome::tooMany);
    EXPECT_LE(seen, ExpansionBudget::maximum.steps);
}

TEST(RecurrenceRule, WrongPartsAreNamed) {
    std::string problem;
    for (const auto& [rule, reason] : std::vector<std::pair<const char*, const char*>>{
             {"INTERVAL=2", "recurrence rule without FREQ"},
             {"FREQ=OFTEN", "recurrence rule with a wrong FREQ \"OFTEN\""},
             {"FREQ=DAILY;INTERVAL=0", "recurrence rule with a wrong INTERVAL \"0\""},
             {"FREQ=DAILY;COUNT=-1", "recurrence rule with a wrong COUNT \"-1\""},
             {"FREQ=DAILY;BYMONTHDAY=-2147483648", "recurrence rule with a wrong BYMONTHDAY \"-2147483648\""},
             {"FREQ=DAILY;BYMONTHDAY=0", "recurrence rule with a wrong BYMONTHDAY \"0\""},
             {"FREQ=DAILY;BYHOUR=-1", "recurrence rule with a wrong BYHOUR \"-1\""},
             {"FREQ=DAILY;BYMONTHDAY=32", "recurrence rule with a wrong BYMONTHDAY \"32\""},
             {"FREQ=DAILY;BYDAY=XX", "recurrence rule with a wrong BYDAY \"XX\""},
             {"FREQ=DAILY;UNTIL=soon", "recurrence rule with a wrong UNTIL \"soon\""}}) {
        EXPECT_FALSE(RecurrenceRule::parse(rule, problem)) << rule;
        EXPECT_EQ(problem, reason);
    }
}

TEST(RuleExpansion, TheStepsOfManySeriesAreBoundedTogether) {
    std::string problem;
    const auto rule = RecurrenceRule::parse("FREQ=SECONDLY", problem);
    const RuleExpansion expansion(*rule, {2026, 3, 4, 0, 0, 0}, false);
    ExpansionBudget budget;
    for (int i = 0; i < 300; ++i) {
        budget.beginSeries();
        EXPECT_EQ(
            expansion.visit(
                secondsOf({2026, 3, 4}), secondsOf({2027, 3, 4}), [](std::int64_t) { return true; }, budget),
            RuleExpansion::Outcome::tooMany);
    }
    EXPECT_GT(budget.stepsTaken(), 300 * ExpansionBudget::share.steps);
    EXPECT_LT(budget.stepsTaken(), ExpansionBudget::reserve.steps + 301 * ExpansionBudget::share.steps);
}

}  // namespace
}  // namespace platform
