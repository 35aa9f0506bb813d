#pragma once

#include <HbrCore/Scheduling/AlertInvocation.h>
#include <HbrCore/Scheduling/AlertSchedule.h>

#include <memory>
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
    using Invocations = std::shared_ptr<const std::vector<AlertInvocation>>;
    /// Scheduled, then snoozed. The same object as long as neither changed.
    Invocations all() const;

    void replaceScheduled(std::vector<AlertInvocation> alerts);
    /// An equal one is kept once.
    void snooze(AlertInvocation invocation);
    /// The first equal one, among the snoozed or the scheduled by its kind.
    void remove(const AlertInvocation& invocation);
    std::optional<AlertInvocation> removeSnooze(std::string_view eventId);

  private:
    mutable std::mutex mutex_;
    std::vector<AlertInvocation> scheduled_;
    std::vector<AlertInvocation> snoozed_;
    /// Made with the first question after a change.
    mutable Invocations all_;
};

}  // namespace hbr
