#include <HeedbannerWidgetExtension/TimelineProviders.h>

#include <algorithm>
#include <utility>

namespace hbr {

using platform::Timeline;
using platform::TimelineProviderContext;
using platform::TimelineReloadPolicy;

namespace {

TimelineReloadPolicy aMinuteAfter(platform::Date moment, const platform::Environment& environment) {
    return TimelineReloadPolicy::after(environment.calendar.addingMinutes(moment, 1));
}

std::vector<Event> firstEvents(EventRefs events, std::size_t count) {
    events.resize(std::min(events.size(), count));
    return copied(events);
}

UpcomingEventsEntry upcomingEntry(const EventSource& source) {
    return {source.environment->now(),
            firstEvents(source.upcomingEvents(), UpcomingEvetsProvider::maximumEvents)};
}

CurrentEventsEntry currentEntry(const EventSource& source) {
    return {source.environment->now(), copied(source.currentEvents())};
}

template <class Entry>
Timeline<Entry> minuteLong(Entry entry, const platform::Environment& environment) {
    const auto policy = aMinuteAfter(entry.date, environment);
    Timeline<Entry> timeline{{}, policy};
    timeline.entries.push_back(std::move(entry));
    return timeline;
}

}  // namespace

NextEventEntry NextEventProvider::placeholder(const TimelineProviderContext&) const {
    return {eventManager_.environment->now(), std::nullopt};
}

void NextEventProvider::getSnapshot(const TimelineProviderContext&,
                                    std::function<void(NextEventEntry)> completion) const {
    const auto events = eventManager_.upcomingEvents();
    NextEventEntry entry{eventManager_.environment->now(), std::nullopt};
    if (!events.empty()) entry.event = *events.front();
    completion(std::move(entry));
}

void NextEventProvider::getTimeline(const TimelineProviderContext&,
                                    std::function<void(Timeline<NextEventEntry>)> completion) const {
    eventManager_.reload([source = eventManager_, completion = std::move(completion)] {
        auto events = firstEvents(source.upcomingEvents(), maximumEntries);
        platform::Date date = source.environment->now();
        Timeline<NextEventEntry> timeline;
        for (Event& event : events) {
            const platform::Date start = event.startDate;
            timeline.entries.push_back({date, std::move(event)});
            date = start;
        }
        timeline.policy = aMinuteAfter(date, *source.environment);
        completion(std::move(timeline));
    });
}

UpcomingEventsEntry UpcomingEvetsProvider::placeholder(const TimelineProviderContext&) const {
    return {eventManager_.environment->now(), {}};
}

void UpcomingEvetsProvider::getSnapshot(const TimelineProviderContext&,
                                        std::function<void(UpcomingEventsEntry)> completion) const {
    completion(upcomingEntry(eventManager_));
}

void UpcomingEvetsProvider::getTimeline(const TimelineProviderContext&,
                                        std::function<void(Timeline<UpcomingEventsEntry>)> completion) const {
    eventManager_.reload([source = eventManager_, completion = std::move(completion)] {
        completion(minuteLong(upcomingEntry(source), *source.environment));
    });
}

CurrentEventsEntry CurrentEvetsProvider::placeholder(const TimelineProviderContext&) const {
    return {eventManager_.environment->now(), {}};
}

void CurrentEvetsProvider::getSnapshot(const TimelineProviderContext&,
                                       std::function<void(CurrentEventsEntry)> completion) const {
    completion(currentEntry(eventManager_));
}

void CurrentEvetsProvider::getTimeline(const TimelineProviderContext&,
                                       std::function<void(Timeline<CurrentEventsEntry>)> completion) const {
    eventManager_.reload([source = eventManager_, completion = std::move(completion)] {
        completion(minuteLong(currentEntry(source), *source.environment));
    });
}

}  // namespace hbr
