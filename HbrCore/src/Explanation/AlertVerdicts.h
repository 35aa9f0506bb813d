#pragma once

#include "RuleContext.h"

namespace hbr {

/// How an item relates to the moment alone. A reload lists what is under way or pending whatever the exclude
/// rules say, and what is over never.
enum class TimeFrame { over, current, pending, ahead };

/// Of a calendar event or task.
TimeFrame timeFrame(const RuleContext& context, const Event& event);

/// Whether it is over.
RuleVerdict pastVerdict(const RuleContext& context, const Event& event);
/// Whether it begins within the days that are looked at.
RuleVerdict daysVerdict(const RuleContext& context, platform::Date start, TimeFrame frame);
/// Which exclude rules hit it.
template <class Item>
RuleVerdict excludeRulesVerdict(const RuleContext& context, const Item& item, TimeFrame frame);
/// Whether the user left out this very event or its series.
RuleVerdict exclusionVerdict(const RuleContext& context, const Event& event, TimeFrame frame);
/// The same of one occurrence, which can be left out by itself.
RuleVerdict exclusionVerdict(const RuleContext& context, const platform::EKEvent& record, const Event& event,
                             TimeFrame frame);
inline RuleVerdict exclusionVerdict(const RuleContext& context, const platform::EKReminder&,
                                    const Event& event, TimeFrame frame) {
    return exclusionVerdict(context, event, frame);
}
RuleVerdict callVerdict(const RuleContext& context, const Event& event, TimeFrame frame);
/// Whether its alert is still to come or its alert period runs. In between it is in no list: when the lead
/// is over an hour, or when travel time is counted.
void addLeadVerdicts(const RuleContext& context, const Event& event, TimeFrame frame,
                     std::vector<RuleVerdict>& verdicts);
/// The same of an own reminder, which has no alert period.
RuleVerdict reminderLeadVerdict(const RuleContext& context, const Reminder& reminder);

}  // namespace hbr
