#pragma once

#include "RuleContext.h"

namespace hbr {

/// Whether demonstration events take the place of everything; added only then.
void addScreenshotVerdict(const RuleContext& context, std::vector<RuleVerdict>& verdicts);
/// Whether the calendar or task list is watched.
RuleVerdict watchedVerdict(const RuleContext& context, const platform::EKCalendar& calendar);
/// What comes of an account being delegated; added only for delegated ones.
void addDelegatedVerdict(const platform::EKCalendar& calendar, std::vector<RuleVerdict>& verdicts);
/// Whether the same meeting is listed from another calendar; added only then. Of what two stores hold, the
/// delegated copy is dropped.
void addDuplicateVerdict(const RuleContext& context, const platform::EKEvent& event,
                         std::vector<RuleVerdict>& verdicts);

}  // namespace hbr
