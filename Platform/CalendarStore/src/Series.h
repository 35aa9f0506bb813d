#pragma once

#include "ItemScanner.h"
#include "RecurrenceSet.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// An item with its times in their zones. `file` keeps `item` alive.
struct ItemRecord {
    std::shared_ptr<const ScannedFile> file;
    const ScannedItem* item = nullptr;
    /// A task without DTSTART starts at its due moment, one without any time at the beginning of time.
    ZonedTime start;
    /// To the end of an event, to the due moment of a task.
    ItemLength length;
    std::optional<ZonedTime> recurrenceId;
};

/// One occurrence of an event.
struct Occurrence {
    Date start;
    Date end;
    /// The start that the series gives it; absent for an event that does not recur.
    std::optional<Date> originalStart;
    bool isDetached = false;
    const ItemRecord* record = nullptr;
};

/// The items of one UID in one collection: the series itself and the occurrences changed by themselves.
class Series {
  public:
    /// Without a master there are only the overrides. `resolver` is the master's. `items`: all that the
    /// master and the overrides were chosen from.
    Series(std::string identifier, std::optional<ItemRecord> master, std::vector<ItemRecord> overrides,
           TimeResolver* resolver, std::vector<const ScannedItem*> items);

    const std::string& identifier() const { return identifier_; }
    /// The snapshot that the series is part of keeps the files of all of them.
    const std::vector<const ScannedItem*>& items() const { return items_; }
    const std::optional<ItemRecord>& master() const { return master_; }
    const std::vector<ItemRecord>& overrides() const { return overrides_; }
    /// Rules or added dates, or an occurrence changed by itself.
    bool recurs() const { return recurs_; }

    /// Appends the occurrences with start <= to and end >= from, in no order. False when there are more than
    /// the budget allows; the first ones are appended then.
    bool occurrences(Date from, Date to, std::vector<Occurrence>& into, ExpansionBudget& budget) const;

    /// The series has nothing before the first and after the last moment; absent: without end.
    Date firstMoment() const { return firstMoment_; }
    std::optional<Date> lastMoment() const { return lastMoment_; }

  private:
    /// From `from` on the series looks like `record`.
    struct Range {
        Date from;
        const ItemRecord* record;
        /// Seconds of wall-clock time by which each occurrence is moved.
        std::int64_t shift;
    };

    ZonedTime originalOf(const ItemRecord& override) const;
    Occurrence occurrenceOf(const RecurrenceSet::Instance& instance) const;
    void findBounds();

    std::string identifier_;
    std::vector<const ScannedItem*> items_;
    std::optional<ItemRecord> master_;
    std::vector<ItemRecord> overrides_;
    std::optional<RecurrenceSet> set_;
    std::vector<Range> ranges_;
    MomentSet replaced_;
    bool recurs_ = false;
    /// How far before its start an occurrence's original may lie and how long it may last, in seconds.
    double reach_ = 0;
    Date firstMoment_;
    std::optional<Date> lastMoment_;
};

}  // namespace platform
