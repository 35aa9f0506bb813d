#pragma once

#include "RuleExpansion.h"
#include "ZonedTime.h"

#include <optional>
#include <set>
#include <vector>

namespace platform {

/// Moments, or whole days where either side of a comparison is a date.
class MomentSet {
  public:
    /// `eventIsDate`: the moments will be compared with those of an all-day event.
    void insert(const ZonedTime& time, bool eventIsDate);
    bool contains(const ZonedTime& time) const;
    bool empty() const { return moments_.empty() && days_.empty(); }

  private:
    std::set<double> moments_;
    std::set<std::int64_t> days_;
};

/// The starts of a series: its first one, what the rules yield and the dates added, less what is excluded.
/// Rules are followed in the wall-clock time of the start's zone.
class RecurrenceSet {
  public:
    struct Instance {
        ZonedTime start;
        /// Of an added date with a length of its own.
        std::optional<ItemLength> length;
    };

    RecurrenceSet(const ScannedItem& item, const ZonedTime& start, TimeResolver& resolver);

    /// Appends the instances that start in [from, to], in no order, each once. False when there are more
    /// than the budget allows; the first ones are there then.
    bool instances(Date from, Date to, std::vector<Instance>& into, ExpansionBudget& budget) const;

    bool recurs() const { return !rules_.empty() || !dates_.empty(); }
    /// Start of the first instance, and a bound for the last one's; absent: without end.
    Date first() const { return first_; }
    std::optional<Date> lastBound() const { return lastBound_; }
    double longestAddedSeconds() const { return longestAddedSeconds_; }

  private:
    struct Rule {
        RecurrenceRule rule;
        RuleExpansion expansion;
        /// COUNT where instances have to be counted; one of equal steps has its end worked out instead.
        std::optional<int> count;
        /// UNTIL in UTC; other forms compare by `untilLocal`.
        std::optional<Date> untilInstant;
        std::optional<std::int64_t> untilLocal;
    };

    std::optional<Rule> makeRule(const std::string& text, const ScannedItem& item,
                                 TimeResolver& resolver) const;
    std::optional<Date> boundOf(const Rule& rule) const;
    template <class Visit>
    bool visit(const Rule& rule, bool isExclusion, std::int64_t from, std::int64_t to,
               ExpansionBudget& budget, const Visit& visit) const;

    ZonedTime start_;
    std::vector<Rule> rules_;
    std::vector<Rule> exclusionRules_;
    std::vector<Instance> dates_;
    MomentSet exclusions_;
    Date first_;
    std::optional<Date> lastBound_;
    double longestAddedSeconds_ = 0;
};

}  // namespace platform
