#include "MadeRecords.h"

namespace platform {
namespace {

/// Tasks whose texts stay in memory, at most.
constexpr std::size_t maximumTasks = 4096;

}  // namespace

void MadeRecords::add(const ScannedItem& item, const EKEventRef& event) {
    events_.emplace(keyOf(item, event->startDate), event);
}

EKEventRef MadeRecords::event(const Occurrence& occurrence, const Series& series) const {
    const auto known = events_.find(keyOf(*occurrence.record->item, occurrence.start));
    if (known == events_.end()) return nullptr;
    // The rest of the series has a part in these.
    const EKEvent& event = *known->second;
    const bool isSame = event.endDate == occurrence.end && event.isDetached == occurrence.isDetached &&
                        event.originalStart == occurrence.originalStart &&
                        event.hasRecurrenceRules == series.recurs();
    return isSame ? known->second : nullptr;
}

void MadeRecords::add(const Occurrence& occurrence, const EKReminderRef& task) {
    if (tasks_.size() >= maximumTasks) tasks_.clear();
    tasks_.insert_or_assign(occurrence.record->item,
                            Task{occurrence.record->file.get(), occurrence.start, occurrence.end, task});
}

EKReminderRef MadeRecords::task(const Occurrence& occurrence, const Series& series) const {
    const auto known = tasks_.find(occurrence.record->item);
    if (known == tasks_.end()) return nullptr;
    const Task& made = known->second;
    const bool isSame = made.start == occurrence.start && made.end == occurrence.end &&
                        made.task->hasRecurrenceRules == series.recurs();
    return isSame ? made.task : nullptr;
}

void MadeRecords::takeTasks(const MadeRecords& other, const std::unordered_set<const ScannedFile*>& files) {
    for (const auto& [item, made] : other.tasks_) {
        if (files.contains(made.file)) tasks_.emplace(item, made);
    }
}

}  // namespace platform
