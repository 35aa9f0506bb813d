#pragma once

#include "RuleContext.h"

namespace hbr {

/// What an event's own properties decide: all-day, cancelled, the user's answer, an alarm.
void addItemVerdicts(const RuleContext& context, const platform::EKEvent& event,
                     std::vector<RuleVerdict>& verdicts);
/// What a task's own properties decide: completed, a due date, an alarm.
void addItemVerdicts(const RuleContext& context, const platform::EKReminder& task,
                     std::vector<RuleVerdict>& verdicts);

}  // namespace hbr
