#include "Series.h"

#include <algorithm>
#include <cmath>

namespace platform {
namespace {

constexpr double day = 86400;

/// At most so many seconds: days that follow the calendar may be longer than others.
double reachOf(const ItemLength& length) {
    return length.approximateSeconds() + (length.days != 0 ? day : 0);
}

}  // namespace

Series::Series(std::string identifier, std::optional<ItemRecord> master, std::vector<ItemRecord> overrides,
               TimeResolver* resolver, std::vector<const ScannedItem*> items)
    : identifier_(std::move(identifier)),
      items_(std::move(items)),
      master_(std::move(master)),
      overrides_(std::move(overrides)) {
    if (master_) set_.emplace(*master_->item, master_->start, *resolver);
    recurs_ = !overrides_.empty() || (set_ && set_->recurs());
    for (const auto& override : overrides_) {
        if (!master_) continue;
        replaced_.insert(*override.recurrenceId, master_->start.isDate);
        if (!override.item->thisAndFuture) continue;
        const auto original = originalOf(override);
        const auto originalThere =
            override.start.isDate ? LocalTime{original.local.year, original.local.month, original.local.day}
                                  : override.start.zone.localTime(original.instant());
        ranges_.push_back(
            {original.instant(), &override, secondsOf(override.start.local) - secondsOf(originalThere)});
    }
    std::sort(ranges_.begin(), ranges_.end(), [](const Range& a, const Range& b) { return a.from < b.from; });
    findBounds();
}

/// RECURRENCE-ID as an occurrence of the master: a day means that day's occurrence.
ZonedTime Series::originalOf(const ItemRecord& override) const {
    const auto& written = *override.recurrenceId;
    if (!master_ || written.isDate == master_->start.isDate) return written;
    const auto& start = master_->start;
    LocalTime local{written.local.year, written.local.month, written.local.day, 0, 0, 0};
    if (!start.isDate) {
        local.hour = start.local.hour;
        local.minute = start.local.minute;
        local.second = start.local.second;
    }
    return {local, start.zone, start.isDate};
}

void Series::findBounds() {
    std::optional<Date> first;
    std::optional<Date> last;
    bool endless = false;
    if (master_) {
        reach_ = std::max(reachOf(master_->length), set_->longestAddedSeconds());
        for (const auto& range : ranges_) {
            reach_ = std::max(
                reach_, reachOf(range.record->length) + std::abs(static_cast<double>(range.shift)) + day);
        }
        first = ranges_.empty() ? set_->first() : set_->first().addingTimeInterval(-reach_);
        if (set_->lastBound()) {
            last = recurs_ ? set_->lastBound()->addingTimeInterval(reach_)
                           : master_->length.endAfter(master_->start);
        } else {
            endless = true;
        }
    }
    for (const auto& override : overrides_) {
        const auto start = override.start.instant();
        const auto end = override.length.endAfter(override.start);
        first = first ? std::min(*first, start) : start;
        last = last ? std::max(*last, end) : end;
    }
    firstMoment_ = first.value_or(Date());
    if (!endless) lastMoment_ = last;
}

Occurrence Series::occurrenceOf(const RecurrenceSet::Instance& instance) const {
    const auto original = instance.start.instant();
    auto start = instance.start;
    auto length = instance.length.value_or(master_->length);
    const ItemRecord* record = &*master_;
    const auto after = std::upper_bound(ranges_.begin(), ranges_.end(), original,
                                        [](Date moment, const Range& range) { return moment < range.from; });
    if (after != ranges_.begin()) {
        const auto& range = *std::prev(after);
        record = range.record;
        length = record->length;
        const bool isDate = record->start.isDate;
        const auto there = isDate ? LocalTime{start.local.year, start.local.month, start.local.day}
                                  : record->start.zone.localTime(original);
        start = {localTimeOf(secondsOf(there) + range.shift), record->start.zone, isDate};
    }
    Occurrence occurrence{start.instant(), length.endAfter(start), {}, false, record};
    if (recurs_) occurrence.originalStart = original;
    return occurrence;
}

namespace {

std::ptrdiff_t kept(const std::vector<RecurrenceSet::Instance>& instances, ExpansionBudget& budget) {
    return static_cast<std::ptrdiff_t>(std::min(instances.size(), budget.keepOfCut()));
}

}  // namespace

bool Series::occurrences(Date from, Date to, std::vector<Occurrence>& into, ExpansionBudget& budget) const {
    const auto touches = [&](const Occurrence& occurrence) {
        return occurrence.start <= to && occurrence.end >= from;
    };
    bool complete = true;
    if (set_) {
        budget.beginSeries();
        std::vector<RecurrenceSet::Instance> instances;
        const auto latest = ranges_.empty() ? to : to.addingTimeInterval(reach_);
        complete = set_->instances(from.addingTimeInterval(-reach_), latest, instances, budget);
        if (!complete) instances.erase(instances.begin() + kept(instances, budget), instances.end());
        for (const auto& instance : instances) {
            if (replaced_.contains(instance.start)) continue;
            const auto occurrence = occurrenceOf(instance);
            if (touches(occurrence)) into.push_back(occurrence);
        }
    }
    for (const auto& override : overrides_) {
        const Occurrence occurrence{override.start.instant(), override.length.endAfter(override.start),
                                    originalOf(override).instant(), true, &override};
        if (touches(occurrence)) into.push_back(occurrence);
    }
    return complete;
}

}  // namespace platform
