#pragma once

#include <HbrCore/Events/EventRef.h>
#include <HeedbannerWidgetExtension/WidgetEntries.h>
#include <System/Environment.h>
#include <WidgetHost/TimelineProvider.h>

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace hbr {

/// What the providers ask of the events; the manager's lists, or demonstration events.
struct EventSource {
    platform::EnvironmentRef environment;
    std::function<EventRefs()> upcomingEvents;
    std::function<EventRefs()> currentEvents;
    /// Brings both lists up to date, announces nothing and completes on the main queue.
    std::function<void(std::function<void()> completion)> reload;
};

/// Counts down to each of the next three events from the start of the one before.
class NextEventProvider final : public platform::TimelineProvider<NextEventEntry> {
  public:
    static constexpr std::size_t maximumEntries = 3;

    explicit NextEventProvider(EventSource eventManager) : eventManager_(std::move(eventManager)) {}
    NextEventEntry placeholder(const platform::TimelineProviderContext&) const override;
    void getSnapshot(const platform::TimelineProviderContext&,
                     std::function<void(NextEventEntry)> completion) const override;
    void getTimeline(const platform::TimelineProviderContext&,
                     std::function<void(platform::Timeline<NextEventEntry>)> completion) const override;

  private:
    EventSource eventManager_;
};

/// The first six upcoming events, renewed every minute.
class UpcomingEvetsProvider final : public platform::TimelineProvider<UpcomingEventsEntry> {
  public:
    static constexpr std::size_t maximumEvents = 6;

    explicit UpcomingEvetsProvider(EventSource eventManager) : eventManager_(std::move(eventManager)) {}
    UpcomingEventsEntry placeholder(const platform::TimelineProviderContext&) const override;
    void getSnapshot(const platform::TimelineProviderContext&,
                     std::function<void(UpcomingEventsEntry)> completion) const override;
    void getTimeline(const platform::TimelineProviderContext&,
                     std::function<void(platform::Timeline<UpcomingEventsEntry>)> completion) const override;

  private:
    EventSource eventManager_;
};

/// All events under way, renewed every minute.
class CurrentEvetsProvider final : public platform::TimelineProvider<CurrentEventsEntry> {
  public:
    explicit CurrentEvetsProvider(EventSource eventManager) : eventManager_(std::move(eventManager)) {}
    CurrentEventsEntry placeholder(const platform::TimelineProviderContext&) const override;
    void getSnapshot(const platform::TimelineProviderContext&,
                     std::function<void(CurrentEventsEntry)> completion) const override;
    void getTimeline(const platform::TimelineProviderContext&,
                     std::function<void(platform::Timeline<CurrentEventsEntry>)> completion) const override;

  private:
    EventSource eventManager_;
};

}  // namespace hbr
