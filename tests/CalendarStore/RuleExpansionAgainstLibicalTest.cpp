#include "RandomRecurrenceRules.h"
#include "RecurrenceSet.h"

#include <System/Diagnostics.h>

#include <gtest/gtest.h>
#include <libical/ical.h>

#include <algorithm>
#include <stdexcept>

namespace platform {
namespace {

using test::RandomRecurrenceRules;
using test::written;
using Instances = std::vector<std::int64_t>;

constexpr std::size_t wanted = 16;
constexpr int randomRules = 1800;
const std::int64_t horizon = secondsOf({2060, 1, 1});

std::string listed(const Instances& instances) {
    std::string text;
    for (const auto instance : instances)
        text += written(instance) + " ";
    return text;
}

/// What libical yields: `wanted` instances at most, none after the horizon.
Instances reference(const std::string& rule, std::int64_t start) {
    struct Free {
        void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
    };
    auto parsed = icalrecurrencetype_from_string(rule.c_str());
    const std::unique_ptr<icalrecur_iterator, Free> iterator(
        icalrecur_iterator_new(parsed, icaltime_from_string(written(start).c_str())));
    Instances instances;
    while (iterator && instances.size() < wanted) {
        const auto t = icalrecur_iterator_next(iterator.get());
        if (icaltime_is_null_time(t)) break;
        const auto instance = secondsOf({t.year, t.month, t.day, t.hour, t.minute, t.second});
        if (instance > horizon) break;
        instances.push_back(instance);
    }
    return instances;
}

/// Our side of it, in UTC, with COUNT and UNTIL, between two moments.
Instances ours(const std::string& rule, std::int64_t start, std::int64_t from, std::int64_t to) {
    static ZoneDefinitionCache zones;
    static const std::vector<ZoneDefinitionRef> noZones;
    static const std::filesystem::path file = "a.ics";
    CollectedDiagnostics diagnostics;
    TimeResolver resolver(file, TimeZone::utc(), ZoneLookup("/usr/share/zoneinfo", noZones, zones),
                          diagnostics);
    ScannedItem item;
    item.recurrence = std::make_unique<WrittenRecurrence>();
    item.recurrence->rules = {rule};
    const RecurrenceSet set(item, ZonedTime{localTimeOf(start), TimeZone::utc(), false}, resolver);
    std::vector<RecurrenceSet::Instance> found;
    const auto date = [](std::int64_t seconds) { return TimeZone::utc().date(localTimeOf(seconds)); };
    ExpansionBudget budget;
    EXPECT_TRUE(set.instances(date(from), date(to), found, budget)) << rule;
    Instances instances;
    for (const auto& instance : found)
        instances.push_back(secondsOf(instance.start.local));
    std::sort(instances.begin(), instances.end());
    return instances;
}

/// The rule's first instances from `from` on, without COUNT and UNTIL.
Instances expanded(const std::string& rule, std::int64_t start, std::int64_t from, std::size_t count) {
    std::string problem;
    const auto parsed = RecurrenceRule::parse(rule, problem);
    if (!parsed) throw std::runtime_error(rule + ": " + problem);
    Instances instances;
    RuleExpansion(*parsed, localTimeOf(start), false).visit(from, horizon, [&](std::int64_t instance) {
        instances.push_back(instance);
        return instances.size() < count;
    });
    return instances;
}

/// Nothing for a rule that has none.
std::optional<std::int64_t> firstInstance(const std::string& rule, std::int64_t base) {
    const auto instances = expanded(rule, base, base, 1);
    return instances.empty() ? std::nullopt : std::optional(instances.front());
}

void expectAgreement(const std::string& rule, std::int64_t start) {
    const auto expected = reference(rule, start);
    // A rule that libical takes to its end is compared up to the horizon.
    const auto to = expected.size() == wanted ? expected.back() : horizon;
    const auto found = ours(rule, start, start, to);
    EXPECT_EQ(found, expected) << rule << " from " << written(start) << "\nours    " << listed(found)
                               << "\nlibical " << listed(expected);
}

TEST(RuleExpansion, AgreesWithLibicalOnRulesOfEveryFrequency) {
    const std::pair<const char*, LocalTime> cases[] = {
        {"FREQ=SECONDLY;INTERVAL=45;BYMINUTE=0,30", {2026, 3, 4, 9, 0, 0}},
        {"FREQ=MINUTELY;INTERVAL=1441", {2026, 2, 27, 23, 30, 0}},
        {"FREQ=MINUTELY;INTERVAL=7;COUNT=9", {2024, 2, 29, 23, 30, 0}},
        {"FREQ=HOURLY;INTERVAL=5;UNTIL=20260305T120000", {2026, 3, 4, 9, 0, 0}},
        {"FREQ=HOURLY;BYMINUTE=0,20;BYSECOND=5,10", {2026, 12, 31, 22, 0, 5}},
        {"FREQ=DAILY;BYMONTH=2", {2024, 2, 10, 9, 0, 0}},
        {"FREQ=DAILY;BYHOUR=9,17;BYMINUTE=0,30;BYSECOND=0,59", {2026, 3, 4, 9, 0, 0}},
        {"FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=SU,SA", {2026, 12, 26, 9, 0, 0}},
        {"FREQ=WEEKLY;BYMONTH=1;BYDAY=TH", {2026, 1, 1, 9, 0, 0}},
        {"FREQ=MONTHLY;BYMONTHDAY=31", {2026, 1, 31, 9, 0, 0}},
        {"FREQ=MONTHLY;INTERVAL=3", {2025, 11, 30, 9, 0, 0}},
        {"FREQ=MONTHLY;BYDAY=5FR", {2026, 1, 30, 9, 0, 0}},
        {"FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=1,-1", {2026, 3, 2, 9, 0, 0}},
        {"FREQ=YEARLY", {2024, 2, 29, 9, 0, 0}},
        {"FREQ=YEARLY;BYMONTH=2,6;BYDAY=-1SU", {2026, 2, 22, 9, 0, 0}},
        {"FREQ=YEARLY;BYYEARDAY=60,366", {2024, 2, 29, 9, 0, 0}},
        {"FREQ=YEARLY;BYYEARDAY=-306", {2024, 3, 1, 9, 0, 0}},
        {"FREQ=YEARLY;BYDAY=53TH", {2026, 12, 31, 9, 0, 0}},
        {"FREQ=YEARLY;BYDAY=SU;BYSETPOS=-2", {2026, 12, 20, 9, 0, 0}},
        {"FREQ=YEARLY;BYWEEKNO=20;BYDAY=MO;WKST=SU", {2026, 5, 18, 9, 0, 0}}};
    for (const auto& [rule, start] : cases)
        expectAgreement(rule, secondsOf(start));
}

TEST(RuleExpansion, AgreesWithLibicalOnRandomRules) {
    RandomRecurrenceRules generator;
    int compared = 0;
    for (int i = 0; i < randomRules; ++i) {
        const auto base = generator.moment();
        const auto rule = generator.rule();
        const auto start = firstInstance(rule, base);
        if (!start) continue;
        expectAgreement(rule + generator.end(*start), *start);
        if (HasFailure()) return;
        ++compared;
    }
    // Few rules name days that never come.
    EXPECT_GT(compared, randomRules * 9 / 10);
}

TEST(RuleExpansion, AWindowHoldsWhatTheWholeSeriesHasThere) {
    RandomRecurrenceRules generator;
    for (int i = 0; i < randomRules / 3; ++i) {
        const auto base = generator.moment();
        const auto rule = generator.rule();
        const auto start = firstInstance(rule, base);
        if (!start) continue;
        const auto all = expanded(rule, *start, *start, wanted);
        // Between two instances, and on one.
        const auto middle = all[all.size() / 2];
        for (const auto from : {middle, middle - generator.below(86400 * 40)}) {
            const auto window = expanded(rule, *start, from, wanted);
            const Instances expected(std::lower_bound(all.begin(), all.end(), from), all.end());
            ASSERT_GE(window.size(), expected.size()) << rule << " from " << written(from);
            EXPECT_EQ(Instances(window.begin(), window.begin() + std::ssize(expected)), expected)
                << rule << " from " << written(from);

            const auto ending = rule + generator.end(*start);
            const auto whole = ours(ending, *start, *start, all.back());
            EXPECT_EQ(ours(ending, *start, from, all.back()),
                      Instances(std::lower_bound(whole.begin(), whole.end(), from), whole.end()))
                << ending << " from " << written(from);
        }
        if (HasFailure()) return;
    }
}

}  // namespace
}  // namespace platform
