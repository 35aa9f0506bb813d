#pragma once

#include "Series.h"

#include <CalendarStore/EKCalendarItem.h>

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace platform {

/// Records that were made before, so that what is made again of the same item at the same time is the same
/// object. The items must stay alive. Not for several threads.
class MadeRecords {
  public:
    void add(const ScannedItem& item, const EKEventRef& event);
    /// nullptr when none was made of that occurrence.
    EKEventRef event(const Occurrence& occurrence, const Series& series) const;
    void forgetEvents() { events_.clear(); }

    void add(const Occurrence& occurrence, const EKReminderRef& task);
    EKReminderRef task(const Occurrence& occurrence, const Series& series) const;
    /// The tasks of these files.
    void takeTasks(const MadeRecords& other, const std::unordered_set<const ScannedFile*>& files);

  private:
    struct Task {
        const ScannedFile* file;
        Date start;
        Date end;
        EKReminderRef task;
    };
    using EventKey = std::pair<const ScannedItem*, double>;
    struct HashOfKey {
        std::size_t operator()(const EventKey& key) const noexcept {
            return std::hash<const ScannedItem*>{}(key.first) * 31 + std::hash<double>{}(key.second);
        }
    };
    static EventKey keyOf(const ScannedItem& item, Date start) {
        return {&item, start.timeIntervalSinceReferenceDate()};
    }

    /// By the item and the start.
    std::unordered_map<EventKey, EKEventRef, HashOfKey> events_;
    std::unordered_map<const ScannedItem*, Task> tasks_;
};

}  // namespace platform
