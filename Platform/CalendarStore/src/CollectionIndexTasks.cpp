#include "CollectionIndex.h"

#include "MadeRecords.h"

#include <algorithm>

namespace platform {
namespace {

constexpr double dayLength = 86400;

bool isDone(const ItemRecord& record) {
    return record.item->completed || record.item->cancelled;
}

bool hasDue(const ScannedItem& item) {
    return item.end || (item.start && item.duration);
}

/// The occurrence at which a recurring task is listed: the next open one, else the last open one, else the
/// last of all. `isCut`: it was looked for among the first ones only, because there are too many.
Occurrence listedOccurrence(const Series& series, Date now, ExpansionBudget& budget, bool& isCut) {
    bool complete = true;
    const auto search = [&](Date from, Date to) {
        std::vector<Occurrence> found;
        complete &= series.occurrences(from, to, found, budget);
        std::sort(found.begin(), found.end(), [](const auto& a, const auto& b) { return a.end < b.end; });
        return found;
    };
    const auto isOpen = [](const Occurrence& occurrence) { return !isDone(*occurrence.record); };
    for (const double days : {40.0, 800.0, 15000.0}) {
        const auto ahead =
            search(now, std::max(now, series.firstMoment()).addingTimeInterval(days * dayLength));
        const auto next = std::find_if(ahead.begin(), ahead.end(), [&](const Occurrence& occurrence) {
            return isOpen(occurrence) && occurrence.end >= now;
        });
        if (next != ahead.end()) return *next;
    }
    const auto past = search(series.firstMoment(), now);
    isCut = !complete;
    const auto last = std::find_if(past.rbegin(), past.rend(), isOpen);
    if (last != past.rend()) return *last;
    if (!past.empty()) return past.back();
    const auto& record = series.master() ? *series.master() : series.overrides().front();
    return {record.start.instant(), record.length.endAfter(record.start), {}, false, &record};
}

DateComponents componentsOf(const Calendar& calendar, Date moment, bool isDate) {
    auto components = calendar.components(moment);
    if (isDate) {
        components.hour = components.minute = components.second = std::nullopt;
    } else if (calendar.date(components) != moment) {
        // The second of two equal readings: only its offset distinguishes it from the first.
        const auto& zone = calendar.timeZone();
        components.timeZone = TimeZone::fixed(zone.offsetAt(moment), zone.name());
    }
    return components;
}

}  // namespace

EKReminderRef CollectionIndex::taskOf(const Series& series, Date now, const EKCalendarRef& calendar,
                                      ExpansionBudget& budget) const {
    const auto& first = series.master() ? *series.master() : series.overrides().front();
    const bool masterDone = series.master() && isDone(*series.master());
    const bool standsAlone = masterDone || !series.recurs() || (!first.item->start && !first.item->end);
    bool isCut = false;
    const auto occurrence =
        standsAlone ? Occurrence{first.start.instant(), first.length.endAfter(first.start), {}, false, &first}
                    : listedOccurrence(series, now, budget, isCut);
    if (isCut) reportTooMany(series);
    if (auto made = made_->task(occurrence, series); made && made->calendar == calendar) return made;
    auto task = makeTask(series, occurrence, calendar);
    made_->add(occurrence, task);
    return task;
}

EKReminderRef CollectionIndex::makeTask(const Series& series, const Occurrence& occurrence,
                                        const EKCalendarRef& calendar) const {
    const auto& record = *occurrence.record;
    const auto& item = *record.item;
    const auto details = detailsOf(record);

    auto task = std::make_shared<EKReminder>();
    task->calendarItemIdentifier = series.identifier();
    task->calendarItemExternalIdentifier = item.uid;
    task->calendar = calendar;
    task->title = details->title;
    task->location = details->location;
    task->notes = details->notes;
    task->url = details->url;
    task->hasRecurrenceRules = series.recurs();
    task->isCompleted = isDone(record);
    if (item.start) {
        task->startDateComponents = componentsOf(settings_.calendar, occurrence.start, item.start->isDate);
    }
    const bool dueIsDate = item.end ? item.end->isDate : item.start && item.start->isDate;
    if (hasDue(item)) {
        task->dueDate = occurrence.end;
        task->dueDateComponents = componentsOf(settings_.calendar, occurrence.end, dueIsDate);
    }
    // Tasks rarely carry alarms; one that is due at a moment is treated as having an alarm.
    if (hasDue(item) && !dueIsDate) task->alarms.emplace();
    if (details->alarms) {
        task->alarms.emplace();
        for (const auto& alarm : *details->alarms) {
            const auto toEnd = item.start ? occurrence.end.timeIntervalSince(occurrence.start) : 0.0;
            task->alarms->push_back({alarm.absoluteDate, alarm.offset + (alarm.fromEnd ? toEnd : 0)});
        }
    }
    return task;
}

void CollectionIndex::appendOpenTasks(Date from, Date to, Date now, const EKCalendarRef& calendar,
                                      std::vector<EKReminderRef>& into) const {
    std::lock_guard lock(mutex_);
    ExpansionBudget budget;
    for (const auto& series : tasks_) {
        if (series->firstMoment() > to || (series->lastMoment() && *series->lastMoment() < from)) continue;
        auto task = taskOf(*series, now, calendar, budget);
        if (task->isCompleted || !task->dueDate || *task->dueDate < from || *task->dueDate > to) continue;
        into.push_back(std::move(task));
    }
}

void CollectionIndex::appendTasks(Date now, const EKCalendarRef& calendar,
                                  std::vector<EKReminderRef>& into) const {
    std::lock_guard lock(mutex_);
    ExpansionBudget budget;
    for (const auto& series : tasks_)
        into.push_back(taskOf(*series, now, calendar, budget));
}

EKReminderRef CollectionIndex::task(const std::string& identifier, Date now,
                                    const EKCalendarRef& calendar) const {
    const auto known = byIdentifier_.find(identifier);
    if (known == byIdentifier_.end()) return nullptr;
    const auto& series = *known->second;
    const auto& record = series.master() ? *series.master() : series.overrides().front();
    if (record.item->kind != ScannedItem::Kind::task) return nullptr;
    std::lock_guard lock(mutex_);
    ExpansionBudget budget;
    return taskOf(series, now, calendar, budget);
}

}  // namespace platform
