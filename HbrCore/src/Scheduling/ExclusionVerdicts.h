#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <TimeAndText/Calendar.h>

#include <optional>
#include <vector>

#include "RecordCache.h"

namespace hbr {

/// Which of the store's records the exclude rules hit, kept from reload to reload with the rules that gave
/// the answers: a record is compared once with the same rules. Not for several threads.
class ExclusionVerdicts {
  public:
    explicit ExclusionVerdicts(const platform::Calendar& calendar) : calendar_(calendar) {}

    /// Drops what other rules decided.
    void setRules(const std::vector<FilterRule>& rules);
    /// As `filteredApplyingRules` with `excludes`.
    std::vector<platform::EKEventRef> withoutExcluded(std::vector<platform::EKEventRef> events);
    std::vector<platform::EKReminderRef> withoutExcluded(std::vector<platform::EKReminderRef> reminders);
    /// Ends a round of questions: what was not asked for in it is dropped.
    void forgetUnused();

  private:
    template <class Record>
    using Verdicts = RecordCache<Record, std::optional<bool>>;
    template <class Record>
    std::vector<std::shared_ptr<const Record>> kept(std::vector<std::shared_ptr<const Record>> records,
                                                    Verdicts<Record>& verdicts) const;

    const platform::Calendar& calendar_;
    std::vector<FilterRule> rules_;
    /// Absent without rules.
    std::optional<FilterRuleMatcher> matcher_;
    Verdicts<platform::EKEvent> events_;
    Verdicts<platform::EKReminder> reminders_;
};

}  // namespace hbr
