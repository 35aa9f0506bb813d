#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Scheduling/AlertInvocation.h>

#include <functional>
#include <vector>

namespace hbr {

/// For how long after its start an event with this lead still alerts, in seconds: as long as the lead, but at
/// least a minute and at most a day.
double lateAlertPeriod(double lead);

/// Finds the alerts that a reload no longer lists because their moment has passed, of events that are still
/// ahead or began within their late alert period: events that arrived or moved late, or that began their
/// alert period while nobody watched. All rules of the alerts that a reload lists apply, the exclude rules
/// and the days looked at included; `date` is when the alert was due. Main thread; `found` is called on the
/// main queue, and `core` must live until then.
void findOverdueAlerts(const CoreServices& core,
                       std::function<void(const std::vector<AlertInvocation>&)> found);

}  // namespace hbr
