#include "CollectionIndex.h"

namespace platform {

EKEventRef CollectionIndex::eventOf(const Occurrence& occurrence, const Series& series,
                                    const EKCalendarRef& calendar) const {
    const auto& record = *occurrence.record;
    const auto details = detailsOf(record);
    auto event = std::make_shared<EKEvent>();
    event->calendarItemIdentifier = series.identifier();
    event->eventIdentifier = series.identifier();
    event->calendarItemExternalIdentifier = record.item->uid;
    event->calendar = calendar;
    event->title = details->title;
    event->location = details->location;
    event->notes = details->notes;
    event->url = details->url;
    event->hasRecurrenceRules = series.recurs();
    if (details->alarms) {
        const auto length = occurrence.end.timeIntervalSince(occurrence.start);
        event->alarms.emplace();
        for (const auto& alarm : *details->alarms) {
            event->alarms->push_back({alarm.absoluteDate, alarm.offset + (alarm.fromEnd ? length : 0)});
        }
    }
    event->startDate = occurrence.start;
    event->endDate = occurrence.end;
    event->isAllDay = record.start.isDate;
    event->isDetached = occurrence.isDetached;
    if (series.recurs()) event->occurrenceDate = occurrence.start;
    event->originalStart = occurrence.originalStart;
    event->status = record.item->cancelled ? EKEventStatus::canceled : details->status;
    event->organizer = details->organizer;
    event->attendees = details->attendees;
    event->travelTime = details->travelTime;
    return event;
}

}  // namespace platform
