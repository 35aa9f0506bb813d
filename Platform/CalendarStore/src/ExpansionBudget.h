#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>

namespace platform {

/// The work that one question may cost. Every series has a share of its own, so that ordinary ones are always
/// complete, however many there are. What exceeds the share comes out of a reserve that all series of the
/// question have in common.
class ExpansionBudget {
  public:
    struct Amount {
        /// Periods and instances that rules look at; a month costs ten more, a year a hundred.
        std::int64_t steps = 0;
        /// Starts handed out or excluded by a rule.
        std::int64_t instances = 0;
    };
    /// For one series, at most.
    static constexpr Amount maximum{400'000, 20'000};
    /// Enough for a daily rule counted from its start over decades, and for two years of its instances.
    static constexpr Amount share{20'000, 800};
    static constexpr Amount reserve{1'000'000, 40'000};
    /// Instances that are kept of a series that exceeded its share when the reserve was used up; of further
    /// series only one each.
    static constexpr std::size_t keptOfReduced = 50;
    static constexpr std::size_t mostReduced = 200;

    /// The calls that follow are about another series.
    void beginSeries() {
        left_.steps -= std::max<std::int64_t>(used_.steps - share.steps, 0);
        left_.instances -= std::max<std::int64_t>(used_.instances - share.instances, 0);
        limit_ = {limitOf(share.steps, left_.steps, maximum.steps),
                  limitOf(share.instances, left_.instances, maximum.instances)};
        total_ += used_.steps;
        used_ = {};
    }
    /// False when the series may take no more.
    bool takeSteps(std::int64_t steps = 1) { return (used_.steps += steps) <= limit_.steps; }
    bool takeInstance() { return ++used_.instances < limit_.instances; }
    bool hasInstances() const { return used_.instances < limit_.instances; }
    /// The series may take less than it could in a question of its own.
    bool isReduced() const { return limit_.steps < maximum.steps || limit_.instances < maximum.instances; }
    /// How many instances to keep of one more series that was cut; all unless it is reduced.
    std::size_t keepOfCut() {
        if (!isReduced()) return std::numeric_limits<std::size_t>::max();
        return ++reduced_ <= mostReduced ? keptOfReduced : 1;
    }
    /// Of all series.
    std::int64_t stepsTaken() const { return total_ + used_.steps; }

  private:
    static std::int64_t limitOf(std::int64_t ownShare, std::int64_t left, std::int64_t atMost) {
        return std::min(ownShare + std::max<std::int64_t>(left, 0), atMost);
    }

    Amount left_ = reserve;
    Amount limit_ = maximum;
    Amount used_;
    std::int64_t total_ = 0;
    std::size_t reduced_ = 0;
};

}  // namespace platform
