#pragma once

#include <Views/WidgetFamily.h>
#include <WidgetHost/Timeline.h>

#include <functional>

namespace platform {

/// For whom entries are asked.
struct TimelineProviderContext {
    WidgetFamily family = WidgetFamily::systemMedium;
    /// For a gallery, not for a placed widget.
    bool isPreview = false;
};

/// Answers the host's three questions. Callable from any thread.
template <class EntryType>
class TimelineProvider {
  public:
    using Entry = EntryType;
    virtual ~TimelineProvider() = default;

    /// What to draw while nothing is known; at once.
    virtual Entry placeholder(const TimelineProviderContext& context) const = 0;
    virtual void getSnapshot(const TimelineProviderContext& context,
                             std::function<void(Entry)> completion) const = 0;
    /// Completes once, on the main queue.
    virtual void getTimeline(const TimelineProviderContext& context,
                             std::function<void(Timeline<Entry>)> completion) const = 0;
};

}  // namespace platform
