#pragma once

#include <DesktopHost/HandledAlerts.h>
#include <HbrCore/Scheduling/CalendarEventManager.h>
#include <TimeAndText/Date.h>

#include <functional>
#include <optional>
#include <set>
#include <utility>
#include <vector>

namespace hbr {

/// Says when an alert is due, each one once however often the events are reloaded meanwhile. An alert that
/// fell due while the machine slept, in the instant of a reload that no longer lists it, or before its event
/// was known, is due as soon as possible. Main thread.
class AlertWatch final : public CalendarEventManagerDelegate {
  public:
    struct World {
        std::function<platform::Date()> clock;
        /// Takes the moment at which to call `wake` next, in place of the moment named before.
        std::function<void(std::optional<platform::Date>)> wakeAt;
        std::function<void(const AlertInvocation&)> due;
        std::function<void(const AlertInvocation&)> snoozeRemoved;
        /// After one or more alerts were due: all that are remembered.
        std::function<void(const std::vector<HandledAlert>&)> handled = [](const auto&) {};
    };

    explicit AlertWatch(World world) : world_(std::move(world)) {}

    void didUpdateInvocations(const std::vector<AlertInvocation>& invocations) override;
    void didRemoveSnoozedInvocation(const AlertInvocation& invocation) override;
    /// The moment that was named to `wakeAt` has come, or the clock was set.
    void wake();
    /// Alerts whose moment has passed: each is due now, unless its event alerted before. The one of an own
    /// reminder that was moved after its alert is due when the reminder is.
    void didFindOverdue(const std::vector<AlertInvocation>& invocations);

    /// Of the last days.
    std::vector<HandledAlert> handled() const { return {handled_.begin(), handled_.end()}; }
    void restoreHandled(const std::vector<HandledAlert>& handled) {
        handled_ = {handled.begin(), handled.end()};
    }

  private:
    bool wasHandled(const AlertInvocation& invocation) const;
    bool hasAlerted(const Event& event) const;
    bool hasAlertedAtAnyStart(const Event& event) const;
    void handleDue();
    /// Calls `due` for those that were not handled.
    void handle(const std::vector<AlertInvocation>& invocations);
    void schedule();

    World world_;
    std::vector<AlertInvocation> armed_;
    std::set<HandledAlert> handled_;
    std::optional<platform::Date> wakeDate_;
};

}  // namespace hbr
