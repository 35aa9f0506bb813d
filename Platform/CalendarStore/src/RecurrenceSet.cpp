#include "RecurrenceSet.h"

#include <algorithm>
#include <unordered_set>

namespace platform {

namespace {

/// Seconds from one instance to the next where no part of the rule changes them.
std::optional<std::int64_t> equalStep(const RecurrenceRule& rule) {
    const bool hasParts = !rule.seconds.empty() || !rule.minutes.empty() || !rule.hours.empty() ||
                          !rule.weekdays.empty() || !rule.monthDays.empty() || !rule.yearDays.empty() ||
                          !rule.weekNumbers.empty() || !rule.months.empty() || !rule.setPositions.empty();
    if (hasParts) return std::nullopt;
    switch (rule.frequency) {
        case RecurrenceRule::Frequency::secondly:
            return rule.interval;
        case RecurrenceRule::Frequency::minutely:
            return std::int64_t{60} * rule.interval;
        case RecurrenceRule::Frequency::hourly:
            return std::int64_t{3600} * rule.interval;
        case RecurrenceRule::Frequency::daily:
            return std::int64_t{86400} * rule.interval;
        case RecurrenceRule::Frequency::weekly:
            return std::int64_t{7} * 86400 * rule.interval;
        default:
            return std::nullopt;
    }
}

/// A day that a zone left out when it changed to the other side of the date line.
bool isSkippedDay(const ZonedTime& time) {
    if (!time.isDate || !time.zone.isInGap(time.local)) return false;
    return time.instant() == time.zone.date(localTimeOf(secondsOf(time.local) + 86400));
}

/// Seconds by which the wall clock may be shifted against a moment by a change of offset near it.
std::int64_t possibleShift(const TimeZone& zone, Date moment) {
    constexpr int day = 86400;
    const int offset = zone.offsetAt(moment);
    for (const int distance : {-2 * day, -day, day, 2 * day}) {
        if (zone.offsetAt(moment.addingTimeInterval(distance)) != offset) return day;
    }
    return 0;
}

}  // namespace

void MomentSet::insert(const ZonedTime& time, bool eventIsDate) {
    if (time.isDate || eventIsDate) {
        days_.insert(time.day());
    } else {
        moments_.insert(time.instant().timeIntervalSinceReferenceDate());
    }
}

bool MomentSet::contains(const ZonedTime& time) const {
    if (!days_.empty() && days_.contains(time.day())) return true;
    return !moments_.empty() && !time.isDate &&
           moments_.contains(time.instant().timeIntervalSinceReferenceDate());
}

RecurrenceSet::RecurrenceSet(const ScannedItem& item, const ZonedTime& start, TimeResolver& resolver)
    : start_(start), first_(start.instant()), lastBound_(start.instant()) {
    if (!item.recurrence) return;
    const auto& written = *item.recurrence;
    for (const auto& text : written.rules) {
        if (auto rule = makeRule(text, item, resolver)) rules_.push_back(std::move(*rule));
    }
    for (const auto& text : written.exclusionRules) {
        if (auto rule = makeRule(text, item, resolver)) exclusionRules_.push_back(std::move(*rule));
    }
    const auto floatingZone = start.isDate ? std::nullopt : std::optional(start.zone);
    for (const auto& period : written.dates) {
        Instance added{resolver.resolve(period.start, item, floatingZone), {}};
        if (start.isDate) {
            added.start.local = {
                added.start.local.year, added.start.local.month, added.start.local.day, 0, 0, 0};
            added.start.zone = resolver.userZone();
            added.start.isDate = true;
        } else if (added.start.isDate) {
            // A day added to an event with a time means that time of the day.
            added.start = {{added.start.local.year, added.start.local.month, added.start.local.day,
                            start.local.hour, start.local.minute, start.local.second},
                           start.zone,
                           false};
        }
        if (period.duration && period.duration->approximateSeconds() >= 0) {
            added.length = ItemLength{period.duration->days, period.duration->seconds};
        } else if (period.end) {
            const auto end = resolver.resolve(*period.end, item, floatingZone).instant();
            const auto seconds = end.timeIntervalSince(added.start.instant());
            added.length = ItemLength{0, static_cast<std::int64_t>(std::max(seconds, 0.0))};
        }
        // A day more for days that follow the calendar.
        if (added.length)
            longestAddedSeconds_ = std::max(longestAddedSeconds_, added.length->approximateSeconds() + 86400);
        const auto instant = added.start.instant();
        first_ = std::min(first_, instant);
        lastBound_ = std::max(*lastBound_, instant);
        dates_.push_back(std::move(added));
    }
    for (const auto& time : written.exclusions) {
        exclusions_.insert(resolver.resolve(time, item, floatingZone), start.isDate);
    }
    for (const auto& rule : rules_) {
        const auto bound = boundOf(rule);
        lastBound_ = bound && lastBound_ ? std::optional(std::max(*lastBound_, *bound)) : std::nullopt;
    }
}

std::optional<RecurrenceSet::Rule> RecurrenceSet::makeRule(const std::string& text, const ScannedItem& item,
                                                           TimeResolver& resolver) const {
    std::string problem;
    auto parsed = RecurrenceRule::parse(text, problem);
    if (!parsed) {
        resolver.report(item, problem + " left out");
        return std::nullopt;
    }
    Rule rule{*parsed, RuleExpansion(*parsed, start_.local, start_.isDate), parsed->count, {}, {}};
    if (parsed->until) {
        auto until = *parsed->until;
        if (item.wholeDays) until.local = resolver.resolve(until, item).local;
        if (start_.isDate || until.isDate) {
            until.local = {until.local.year, until.local.month, until.local.day, 0, 0, 0};
            until.isUtc = false;
        }
        if (until.isUtc) {
            rule.untilInstant = TimeZone::utc().date(until.local);
        } else {
            rule.untilLocal = secondsOf(until.local);
        }
    }
    if (const auto step = equalStep(*parsed); step && parsed->count && !parsed->until && !start_.isDate) {
        // Bounded, so that large numbers stay in range; a rule ends there anyway.
        const auto room = std::max<std::int64_t>(RuleExpansion::lastSecond() - secondsOf(start_.local), 0);
        const auto steps = std::min(*parsed->count - std::int64_t{1}, room / *step);
        rule.untilLocal = secondsOf(start_.local) + steps * *step;
        rule.count.reset();
    }
    if (!rule.expansion.yieldsAnything(resolver.stepsOfRuleChecks())) {
        resolver.report(item, "recurrence rule that yields no further occurrence: " + text.substr(0, 120));
    }
    return rule;
}

/// A moment after which the rule yields nothing; rough where it must be cheap.
std::optional<Date> RecurrenceSet::boundOf(const Rule& rule) const {
    constexpr double day = 86400;
    if (rule.untilInstant) return rule.untilInstant;
    if (rule.untilLocal) return start_.zone.date(localTimeOf(*rule.untilLocal + 86400));
    const auto& parts = rule.rule;
    const bool restricted = !parts.months.empty() || !parts.monthDays.empty() || !parts.yearDays.empty() ||
                            !parts.weekNumbers.empty() || !parts.setPositions.empty();
    if (!parts.count || restricted) return std::nullopt;
    const double steps = static_cast<double>(*parts.count) * parts.interval;
    if (parts.frequency == RecurrenceRule::Frequency::weekly)
        return first_.addingTimeInterval((steps + 2) * 7 * day);
    if (parts.frequency == RecurrenceRule::Frequency::daily && parts.weekdays.empty()) {
        return first_.addingTimeInterval((steps + 2) * day);
    }
    return std::nullopt;
}

/// Instances of the rule with COUNT and UNTIL; those of the start only for an exclusion rule, because the
/// start is an occurrence anyway. COUNT counts what the rule yields: a start that it does not yield comes in
/// addition. False when the rule was too much work.
template <class Visit>
bool RecurrenceSet::visit(const Rule& rule, bool isExclusion, std::int64_t from, std::int64_t to,
                          ExpansionBudget& budget, const Visit& visit) const {
    const auto start = secondsOf(start_.local);
    if (rule.untilLocal) to = std::min(to, *rule.untilLocal);
    // Counting needs every instance from the start on.
    int seen = 0;
    const auto outcome = rule.expansion.visit(
        rule.count ? start : std::max(from, start), to,
        [&](std::int64_t local) {
            if (rule.count && ++seen > *rule.count) return false;
            if (local == start && !isExclusion) return true;
            if (local < from) return true;
            ZonedTime time{localTimeOf(local), start_.zone, start_.isDate};
            if (rule.untilInstant && time.instant() > *rule.untilInstant) return false;
            return visit(std::move(time));
        },
        budget);
    return outcome != RuleExpansion::Outcome::tooMany;
}

bool RecurrenceSet::instances(Date from, Date to, std::vector<Instance>& into,
                              ExpansionBudget& budget) const {
    bool complete = true;
    std::unordered_set<double> taken;
    std::unordered_set<double> excludedByRule;
    const auto localFrom = secondsOf(start_.zone.localTime(from)) - possibleShift(start_.zone, from);
    const auto localTo = secondsOf(start_.zone.localTime(to)) + possibleShift(start_.zone, to);
    for (const auto& rule : exclusionRules_) {
        complete &= visit(rule, true, localFrom, localTo, budget, [&](const ZonedTime& time) {
            excludedByRule.insert(time.instant().timeIntervalSinceReferenceDate());
            complete &= budget.takeInstance();
            return complete;
        });
    }
    const auto add = [&](const ZonedTime& time, const std::optional<ItemLength>& length) {
        const auto instant = time.instant();
        if (instant < from || instant > to || exclusions_.contains(time)) return;
        const auto seconds = instant.timeIntervalSinceReferenceDate();
        if (!excludedByRule.empty() && excludedByRule.contains(seconds)) return;
        if (!taken.insert(seconds).second) return;
        into.push_back({time, length});
        budget.takeInstance();
    };
    // Added dates first: one with a length of its own comes before the rule's instance at that moment.
    for (const auto& date : dates_) {
        if (!budget.hasInstances()) {
            complete = false;
            break;
        }
        add(date.start, date.length);
    }
    add(start_, {});
    for (const auto& rule : rules_) {
        complete &= visit(rule, false, localFrom, localTo, budget, [&](const ZonedTime& time) {
            if (!isSkippedDay(time)) add(time, {});
            if (budget.hasInstances()) return true;
            complete = false;
            return false;
        });
    }
    return complete;
}

}  // namespace platform
