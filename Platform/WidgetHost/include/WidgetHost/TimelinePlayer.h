#pragma once

#include <WidgetHost/Timeline.h>

#include <optional>

namespace platform {

/// Which entry of a timeline is shown when.
class TimelinePlayer {
  public:
    /// `fallback` is shown for a timeline without entries.
    TimelinePlayer(WidgetTimeline timeline, WidgetEntry fallback);

    /// The last entry whose date is not after `now`; before the first one's date, the first.
    const WidgetEntry& entryAt(Date now) const;
    /// When the next entry takes its place; nothing once the last one is shown.
    std::optional<Date> nextChange(Date now) const;
    /// When the next timeline is to be asked for.
    Date reloadDate() const { return timeline_.policy.date; }

  private:
    WidgetTimeline timeline_;
};

}  // namespace platform
