#include <TimeAndText/TimeZone.h>

#include <algorithm>
#include <limits>
#include <map>
#include <mutex>

#include "PosixTimeZoneRule.h"
#include "WholeSeconds.h"
#include "ZoneFile.h"

namespace platform {
namespace {

using Transition = TimeZone::Transition;

/// The Gregorian calendar repeats itself, weekdays included, every 400 years.
constexpr int yearsPerCycle = 400;
constexpr std::int64_t secondsPerCycle = 146097LL * 86400;
/// No offset is further from UTC, so a reading and its moment are never further apart.
constexpr std::int64_t furthestOffset = 26LL * 3600;

}  // namespace

/// Periods of one offset each. Where a yearly rule holds after the table, a whole cycle of it is written
/// out, and later times are looked up that many cycles earlier.
struct TimeZone::Table {
    struct Period {
        std::int64_t start;
        int offset;

        friend bool operator==(const Period&, const Period&) = default;
    };

    std::string name;
    std::vector<Period> periods;
    std::int64_t cycleEnd = std::numeric_limits<std::int64_t>::max();

    Table(std::string zoneName, int before, const std::vector<Transition>& transitions,
          std::string_view footer)
        : name(std::move(zoneName)) {
        periods.push_back({std::numeric_limits<std::int64_t>::min(), before});
        for (const Transition& change : transitions)
            append(change);
        if (const auto rule = PosixTimeZoneRule::parse(footer)) extend(*rule, transitions);
    }

    friend bool operator==(const Table&, const Table&) = default;

    void append(const Transition& change) {
        while (periods.size() > 1 && periods.back().start >= change.at)
            periods.pop_back();
        if (periods.back().offset != change.offset) periods.push_back({change.at, change.offset});
    }

    void extend(const PosixTimeZoneRule& rule, const std::vector<Transition>& transitions) {
        if (transitions.empty()) periods.front().offset = rule.standardOffset();
        // Nobody asks for what a yearly rule, younger than that, said before.
        constexpr int firstSensibleYear = 1900;
        constexpr int lastSensibleYear = 1'000'000;
        const std::int64_t last =
            transitions.empty() ? std::numeric_limits<std::int64_t>::min() : transitions.back().at;
        if (!rule.hasDaylightTime() || last > secondsOf({.year = lastSensibleYear})) return;
        const int firstYear =
            last < secondsOf({.year = firstSensibleYear}) ? firstSensibleYear : localTimeOf(last).year;
        // Two years more than a cycle at both ends, so that a lookup shifted by a cycle, and its
        // neighbourhood, lie where the rule holds.
        const int lastYear = firstYear + yearsPerCycle + 4;
        std::vector<Transition> changes;
        changes.reserve(2 * static_cast<std::size_t>(lastYear - firstYear + 1));
        for (int year = firstYear; year <= lastYear; ++year) {
            for (const Transition& change : rule.transitionsIn(year)) {
                if (transitions.empty() || change.at > last) changes.push_back(change);
            }
        }
        // Stable: where daylight time ends in the instant in which it begins again, it begins.
        std::stable_sort(changes.begin(), changes.end(), [](auto& a, auto& b) { return a.at < b.at; });
        for (const Transition& change : changes)
            append(change);
        cycleEnd = secondsOf({.year = lastYear - 1});
    }

    std::int64_t shiftInto(std::int64_t seconds) const {
        if (seconds < cycleEnd) return 0;
        return ((seconds - cycleEnd) / secondsPerCycle + 1) * secondsPerCycle;
    }

    std::size_t indexAt(std::int64_t seconds) const {
        const auto next = std::upper_bound(periods.begin() + 1, periods.end(), seconds,
                                           [](std::int64_t at, const Period& p) { return at < p.start; });
        return static_cast<std::size_t>(next - periods.begin()) - 1;
    }

    std::int64_t endOf(std::size_t index) const {
        return index + 1 < periods.size() ? periods[index + 1].start
                                          : std::numeric_limits<std::int64_t>::max();
    }

    int offsetAt(std::int64_t seconds) const { return periods[indexAt(seconds - shiftInto(seconds))].offset; }

    struct Found {
        std::int64_t moment;
        bool inGap;
    };

    /// Tries the offsets in use around a reading in the order of time.
    Found find(std::int64_t reading) const {
        const std::int64_t shift = shiftInto(reading);
        reading -= shift;
        std::size_t index = indexAt(reading - furthestOffset);
        for (;; ++index) {
            const std::int64_t moment = reading - periods[index].offset;
            if (moment < periods[index].start) {
                return {reading - periods[index - 1].offset + shift, true};
            }
            if (moment < endOf(index)) return {moment + shift, false};
        }
    }
};

TimeZone::TimeZone(std::shared_ptr<const Table> table) : table_(std::move(table)) {}

TimeZone TimeZone::utc() {
    static const TimeZone zone = fixed(0, "UTC");
    return zone;
}

TimeZone TimeZone::fixed(int offsetSeconds, std::string name) {
    return TimeZone(
        std::make_shared<const Table>(std::move(name), offsetSeconds, std::vector<Transition>{}, ""));
}

namespace {

bool staysInside(std::string_view name) {
    if (name.empty() || name.find('\0') != std::string_view::npos) return false;
    for (std::size_t start = 0; start <= name.size();) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        const std::string_view piece = name.substr(start, end - start);
        if (piece.empty() || piece == "." || piece == "..") return false;
        start = end + 1;
    }
    return true;
}

}  // namespace

std::optional<TimeZone> TimeZone::named(std::string_view name, const std::filesystem::path& directory) {
    if (name == "UTC") return utc();
    if (!staysInside(name)) return std::nullopt;

    static std::mutex mutex;
    static std::map<std::filesystem::path, std::shared_ptr<const Table>> tables;
    const std::filesystem::path path = directory / name;
    const std::scoped_lock lock(mutex);
    auto known = tables.find(path);
    if (known == tables.end()) {
        const auto file = ZoneFile::read(path);
        if (!file) return std::nullopt;
        auto table =
            std::make_shared<const Table>(std::string(name), file->before, file->transitions, file->footer);
        known = tables.emplace(path, std::move(table)).first;
    }
    return TimeZone(known->second);
}

TimeZone TimeZone::fromTransitions(std::string name, int before, std::vector<Transition> transitions,
                                   std::string_view footer) {
    return TimeZone(std::make_shared<const Table>(std::move(name), before, transitions, footer));
}

bool TimeZone::hasEqualTable(const TimeZone& a, const TimeZone& b) {
    return *a.table_ == *b.table_;
}

std::optional<TimeZone> TimeZone::fromPosixRule(std::string_view rule) {
    if (!PosixTimeZoneRule::parse(rule)) return std::nullopt;
    return fromTransitions(std::string(rule), 0, {}, rule);
}

const std::string& TimeZone::name() const {
    return table_->name;
}

int TimeZone::offsetAt(Date moment) const {
    return table_->offsetAt(wholeSecondsSince1970(moment));
}

LocalTime TimeZone::localTime(Date moment) const {
    const std::int64_t seconds = wholeSecondsSince1970(moment);
    return localTimeOf(seconds + table_->offsetAt(seconds));
}

Date TimeZone::date(const LocalTime& local) const {
    return dateOfSeconds(table_->find(secondsOf(local)).moment);
}

bool TimeZone::isInGap(const LocalTime& local) const {
    return table_->find(secondsOf(local)).inGap;
}

}  // namespace platform
