#include <HbrCore/Scheduling/ListChanges.h>

#include <HbrCore/Events/EventTiming.h>

#include <cmath>

namespace hbr {

namespace {

bool isWholeMinute(platform::Date moment) {
    return std::fmod(moment.timeIntervalSinceReferenceDate(), 60) == 0;
}

}  // namespace

std::optional<platform::Date> nextChangeWithinAMinute(const EventRefs& upcoming, const EventRefs& current,
                                                      platform::Date now) {
    platform::ChangeMoments changes;
    const platform::ClockReading clock(now, &changes);
    for (const EventRef& event : upcoming) {
        if (!isWholeMinute(event->startDate)) isInFuture(*event, clock);
    }
    for (const EventRef& event : current) {
        if (!isWholeMinute(event->endDate)) isCurrentEvent(*event, clock);
    }
    return changes.earliest();
}

}  // namespace hbr
