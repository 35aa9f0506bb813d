#pragma once

#include <CalendarStore/EKCalendarItem.h>
#include <HbrCore/Events/FilterRule.h>
#include <TimeAndText/Calendar.h>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// A list of rules made ready once (patterns compiled, texts folded) for testing many items. Days of the
/// week are those of `calendar`. Immutable, safe from any thread.
class FilterRuleMatcher {
  public:
    FilterRuleMatcher(const std::vector<FilterRule>& rules, const platform::Calendar& calendar);
    ~FilterRuleMatcher();

    /// True when a rule hits the item; an empty rule list never does.
    bool matchesAny(const platform::EKEvent& event) const;
    bool matchesAny(const platform::EKReminder& reminder) const;

  private:
    struct Rule;
    template <class Item>
    bool matchesAnyOf(const Item& item) const;
    std::vector<Rule> rules_;
    platform::Calendar calendar_;
};

/// The regular expression of a `matches` rule's value: "?" is any character, "*" any number of them, all
/// else keeps its meaning in a regular expression.
std::string wildcardPattern(std::string_view value);

bool matches(const platform::EKEvent& event, const FilterRule& rule, const platform::Calendar& calendar);
bool matches(const platform::EKReminder& reminder, const FilterRule& rule,
             const platform::Calendar& calendar);

/// Keeps, in order, the items that no rule hits (`excludes`) or that one does.
std::vector<platform::EKEventRef> filteredApplyingRules(const std::vector<platform::EKEventRef>& events,
                                                        const std::vector<FilterRule>& rules, bool excludes,
                                                        const platform::Calendar& calendar);
std::vector<platform::EKReminderRef> filteredApplyingRules(
    const std::vector<platform::EKReminderRef>& reminders, const std::vector<FilterRule>& rules,
    bool excludes, const platform::Calendar& calendar);

}  // namespace hbr
