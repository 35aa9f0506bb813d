#pragma once

#include <HbrCore/Scheduling/AlertInvocation.h>
#include <HbrCore/Scheduling/AlertSchedule.h>

#include <mutex>
#include <optional>
#include <string_view>
#include <vector>

namespace hbr {

/// The alerts of the last reload and those that the user put off. Safe from any thread.
class AlertRegister {
  public:
    std::vector<AlertInvocation> scheduled() const;
    /// In the order in which they were put off.
    std::vector<AlertInvocation> snoozed() const;
    /// Scheduled, then snoozed.
    std::vector<AlertInvocation> all() const;

    void replaceScheduled(std::vector<ScheduledAlert> alerts);
    /// An equal one stays once.
    void snooze(AlertInvocation invocation);
    /// The first equal one, among the snoozed or the scheduled by its kind.
    void remove(const AlertInvocation& invocation);
    std::optional<AlertInvocation> removeSnooze(std::string_view eventId);

  private:
    mutable std::mutex mutex_;
    std::vector<ScheduledAlert> scheduled_;
    std::vector<AlertInvocation> snoozed_;
};

}  // namespace hbr
