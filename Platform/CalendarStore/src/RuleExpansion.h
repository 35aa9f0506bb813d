#pragma once

#include "ExpansionBudget.h"
#include "RecurrenceRule.h"
#include "RuleDays.h"

#include <TimeAndText/TimeZone.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

namespace platform {

/// The instances of one rule as wall-clock readings, seconds as secondsOf(LocalTime) counts them.
///
/// A period (year, month, week, day, hour, minute or second, every INTERVAL-th from the start's) is filled
/// by itself, so that a rule without COUNT begins near the interval asked for, however long it has been
/// running, and every search ends: work is bounded by the budget.
class RuleExpansion {
  public:
    enum class Outcome { finished, stopped, tooMany };
    /// No rule yields anything after it: the end of the year 9999.
    static std::int64_t lastSecond();

    /// `allDay`: times of day in the rule are ignored.
    RuleExpansion(const RecurrenceRule& rule, const LocalTime& start, bool allDay);

    /// Hands the instances in [from, to] that do not lie before the start to `visit`, ascending, until it
    /// gives false. COUNT and UNTIL are the caller's. `tooMany` when the series may take no more steps.
    using Visitor = std::function<bool(std::int64_t)>;
    Outcome visit(std::int64_t from, std::int64_t to, const Visitor& visit, ExpansionBudget& budget) const;

    /// With a budget of its own.
    Outcome visit(std::int64_t from, std::int64_t to, const Visitor& visitor) const {
        ExpansionBudget budget;
        return visit(from, to, visitor, budget);
    }

    /// False when a search of some decades finds no instance after the start. Takes what it costs from
    /// `steps`; true without a search when there are none left.
    bool yieldsAnything(std::int64_t& steps) const;

  private:
    /// Seconds since midnight, of a rule that yields days. Up to 86,400, so they are made for each visit, not
    /// kept for each rule.
    std::vector<std::int64_t> timesOfDay() const;
    /// The instances of one period on these days, of which BYSETPOS may choose some.
    template <class Visit>
    bool visitInstances(const std::vector<std::int64_t>& days, const std::vector<std::int64_t>& times,
                        std::int64_t from, const Visit& visit) const;
    void applySetPositions(std::vector<std::int64_t>& instances) const;
    struct Period;
    std::int64_t startOfWeek(std::int64_t day) const;
    /// From the period of `first` to that of `day`.
    std::int64_t periodsBetween(const RuleDay& first, const RuleDay& day) const;
    /// So many periods after that of `first`; nothing beyond the last year.
    std::optional<Period> period(const RuleDay& first, std::int64_t distance) const;
    Outcome visitDays(std::int64_t from, std::int64_t to, const Visitor& visit,
                      ExpansionBudget& budget) const;
    Outcome visitTimes(std::int64_t from, std::int64_t to, const Visitor& visit,
                       ExpansionBudget& budget) const;

    RecurrenceRule rule_;
    std::int64_t start_;
    LocalTime startTime_;
};

}  // namespace platform
