#include <WidgetHost/TimelinePlayer.h>

#include <algorithm>
#include <utility>

namespace platform {

namespace {

auto firstAfter(const std::vector<WidgetEntry>& entries, Date now) {
    return std::ranges::upper_bound(entries, now, {}, &WidgetEntry::date);
}

}  // namespace

TimelinePlayer::TimelinePlayer(WidgetTimeline timeline, WidgetEntry fallback)
    : timeline_(std::move(timeline)) {
    if (timeline_.entries.empty()) timeline_.entries.push_back(std::move(fallback));
    std::ranges::stable_sort(timeline_.entries, {}, &WidgetEntry::date);
}

const WidgetEntry& TimelinePlayer::entryAt(Date now) const {
    const auto next = firstAfter(timeline_.entries, now);
    return next == timeline_.entries.begin() ? *next : *std::prev(next);
}

std::optional<Date> TimelinePlayer::nextChange(Date now) const {
    auto next = firstAfter(timeline_.entries, now);
    // Before its date the first entry is shown already.
    if (next == timeline_.entries.begin()) ++next;
    return next == timeline_.entries.end() ? std::nullopt : std::optional(next->date);
}

}  // namespace platform
