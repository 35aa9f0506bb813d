#include "ZonedTime.h"

#include "ItemLimits.h"

#include <algorithm>

namespace platform {

Date ItemLength::endAfter(const ZonedTime& start) const {
    if (days == 0) return start.instant().addingTimeInterval(static_cast<double>(seconds));
    const auto local = localTimeOf(secondsOf(start.local) + std::int64_t{days} * 86400);
    return start.zone.date(local).addingTimeInterval(static_cast<double>(seconds));
}

void TimeResolver::report(const ScannedItem& item, std::string text) {
    if (++reported_ <= limits::problems) {
        diagnostics_.report({.file = file_, .line = item.line, .field = item.uid, .text = std::move(text)});
    } else if (reported_ == limits::problems + 1) {
        diagnostics_.report({.file = file_, .text = "more problems with times in this file"});
    }
}

ZonedTime TimeResolver::resolve(const WrittenTime& time, const ScannedItem& item,
                                const std::optional<TimeZone>& floatingZone) {
    auto resolved = resolveAsWritten(time, item, floatingZone);
    if (!item.wholeDays || resolved.isDate) return resolved;
    const auto start = resolveAsWritten(*item.start, item, floatingZone);
    const auto there = time.isUtc ? start.zone.localTime(resolved.instant()) : resolved.local;
    return {{there.year, there.month, there.day, 0, 0, 0}, userZone_, true};
}

ZonedTime TimeResolver::resolveAsWritten(const WrittenTime& time, const ScannedItem& item,
                                         const std::optional<TimeZone>& floatingZone) {
    if (time.isDate) return {time.local, userZone_, true};
    if (time.isUtc) return {time.local, TimeZone::utc(), false};
    if (!time.tzid) return {time.local, floatingZone.value_or(userZone_), false};
    if (auto zone = zones_.find(*time.tzid)) return {time.local, std::move(*zone), false};
    report(item, "unknown time zone \"" + *time.tzid + "\"; its times are read as local time");
    return {time.local, userZone_, false};
}

ItemLength TimeResolver::lengthOf(const ScannedItem& item, const ZonedTime& start) {
    const auto endsTooEarly = [&] {
        report(item, "the end lies before the start; the start is taken for it");
    };
    if (item.end) {
        const auto end = resolve(*item.end, item, start.isDate ? std::nullopt : std::optional(start.zone));
        if (start.isDate) {
            const bool partOfDay = !end.isDate && secondsOf(end.local) % 86400 != 0;
            const auto days = end.day() - start.day() + (partOfDay ? 1 : 0);
            if (days < 0) endsTooEarly();
            // An end on the day of the start is how some write one whole day.
            return {static_cast<int>(std::max<std::int64_t>(days, 1)), 0};
        }
        const auto instant = end.isDate ? start.zone.date(end.local) : end.instant();
        const auto seconds = instant.timeIntervalSince(start.instant());
        if (seconds < 0) endsTooEarly();
        return {0, static_cast<std::int64_t>(std::max(seconds, 0.0))};
    }
    if (item.duration) {
        const auto& duration = *item.duration;
        if (duration.approximateSeconds() < 0) {
            endsTooEarly();
            return {start.isDate ? 1 : 0, 0};
        }
        if (start.isDate) {
            const auto days = duration.days + (duration.seconds + 86399) / 86400;
            return {static_cast<int>(std::max<std::int64_t>(days, 1)), 0};
        }
        return {duration.days, duration.seconds};
    }
    return {start.isDate ? 1 : 0, 0};
}

ItemLength TimeResolver::timeToDue(const ScannedItem& task, const ZonedTime& start) {
    if (!task.start) return {};
    if (task.end) {
        const auto due = resolve(*task.end, task, start.isDate ? std::nullopt : std::optional(start.zone));
        if (start.isDate && due.isDate)
            return {static_cast<int>(std::max<std::int64_t>(due.day() - start.day(), 0)), 0};
        const auto instant = due.isDate ? start.zone.date(due.local) : due.instant();
        // Due before the start is a contradiction; the due moment is used.
        return {0, static_cast<std::int64_t>(instant.timeIntervalSince(start.instant()))};
    }
    if (task.duration) return {task.duration->days, task.duration->seconds};
    return {};
}

}  // namespace platform
