#pragma once

#include "ItemDetails.h"
#include "SeriesBuilder.h"

#include <CalendarStore/EKCalendarItem.h>
#include <System/Diagnostics.h>
#include <TimeAndText/Calendar.h>

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>
#include <vector>

namespace platform {

/// What the items of a collection need to know of the world around them.
struct CollectionSettings {
    Calendar calendar{TimeZone::utc()};
    std::filesystem::path zoneInfoDirectory;
    std::vector<std::string> ownAddresses;
    std::shared_ptr<DiagnosticsSink> diagnostics;
};

class MadeRecords;

/// The events and tasks of one collection, ordered for questions about intervals. Constant after it was
/// made, safe from any thread.
///
/// The last interval asked for is kept with its occurrences, widened by some days: questions inside it, as
/// a clock that moves on asks them, cost only what they return. A record is made once and is the same object
/// in every answer, also after other items of the collection changed.
class CollectionIndex {
  public:
    /// `files` in the order of their names. Calendars may be absent where there are no such items. `former`
    /// is the same collection before a change: what it made of files that are the same now is taken over.
    CollectionIndex(std::vector<std::shared_ptr<const ScannedFile>> files, const std::string& identifier,
                    CollectionSettings settings, const CollectionIndex* former = nullptr);
    ~CollectionIndex();
    CollectionIndex(const CollectionIndex&) = delete;
    CollectionIndex& operator=(const CollectionIndex&) = delete;

    std::size_t eventCount() const { return events_.size(); }
    std::size_t taskCount() const { return tasks_.size(); }

    /// Events with start <= to and end >= from, in no order.
    void appendEvents(Date from, Date to, const EKCalendarRef& calendar, std::vector<EKEventRef>& into) const;
    /// Open tasks that are due in [from, to].
    void appendOpenTasks(Date from, Date to, Date now, const EKCalendarRef& calendar,
                         std::vector<EKReminderRef>& into) const;
    /// Every task, completed or not, due or not.
    void appendTasks(Date now, const EKCalendarRef& calendar, std::vector<EKReminderRef>& into) const;
    /// First occurrence, or nullptr.
    EKEventRef event(const std::string& identifier, const EKCalendarRef& calendar) const;
    EKReminderRef task(const std::string& identifier, Date now, const EKCalendarRef& calendar) const;

  private:
    struct Window;

    void sortIntoLists();
    void takeOver(const CollectionIndex& former,
                  const std::vector<std::shared_ptr<const ScannedFile>>& files);
    struct Collected {
        std::vector<std::pair<Occurrence, const Series*>> occurrences;
        /// The series of which only the first occurrences are there, because there are too many.
        std::vector<const Series*> cut;
    };
    /// `onlyComplete`: ends at the first series that is cut.
    Collected collect(Date from, Date to, bool onlyComplete) const;
    void reportTooMany(const Series& series) const;
    std::shared_ptr<const ItemDetails> detailsOf(const ItemRecord& record) const;
    EKEventRef eventOf(const Occurrence& occurrence, const Series& series,
                       const EKCalendarRef& calendar) const;
    EKReminderRef taskOf(const Series& series, Date now, const EKCalendarRef& calendar,
                         ExpansionBudget& budget) const;
    EKReminderRef makeTask(const Series& series, const Occurrence& occurrence,
                           const EKCalendarRef& calendar) const;
    void widen(Date from, Date to) const;

    CollectionSettings settings_;
    SeriesList events_;
    SeriesList tasks_;
    /// Events that end, by their first moment, and the latest end up to each.
    std::vector<const Series*> singles_;
    std::vector<Date> latestEnd_;
    /// Series, the endless ones first, then by their last moment, latest first.
    std::vector<const Series*> recurring_;
    std::unordered_map<std::string, const Series*> byIdentifier_;

    mutable std::mutex mutex_;
    mutable std::unique_ptr<Window> window_;
    mutable std::unique_ptr<MadeRecords> made_;
};

}  // namespace platform
