#pragma once

#include <Foundation/Date.h>
#include <HbrCore/Scheduling/CalendarEventManager.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace hbr {

/// Says when an alert is due, each one once however often the events are reloaded meanwhile. An alert that
/// fell due while the machine slept, or in the instant of a reload that no longer lists it, is told as soon
/// as possible. Main thread.
class AlertWatch final : public CalendarEventManagerDelegate {
  public:
    struct World {
        std::function<platform::Date()> clock;
        /// Takes the moment at which to call `wake` next, in place of the moment named before.
        std::function<void(std::optional<platform::Date>)> wakeAt;
        std::function<void(const AlertInvocation&)> due;
        std::function<void(const AlertInvocation&)> snoozeRemoved;
    };

    explicit AlertWatch(World world) : world_(std::move(world)) {}

    void didUpdateInvocations(const std::vector<AlertInvocation>& invocations) override;
    void didRemoveSnoozedInvocation(const AlertInvocation& invocation) override;
    /// The moment that was named to `wakeAt` has come, or the clock was set.
    void wake();

    /// Alerts that fell due before this watch began: each is told now unless its event was told of before.
    /// Those still to come are passed over.
    void catchUp(const std::vector<AlertInvocation>& invocations);

    /// An event (by id and start) and the moment of its alert.
    struct Told {
        std::string eventId;
        platform::Date start;
        platform::Date alert;
        bool isSnooze = false;
        friend bool operator==(const Told&, const Told&) = default;
    };
    /// Of the last day; to be handed to the watch of a process that takes this one's place.
    const std::vector<Told>& told() const { return told_; }
    void restoreTold(std::vector<Told> told) { told_ = std::move(told); }
    /// Still to come.
    const std::vector<AlertInvocation>& armed() const { return armed_; }

  private:
    bool wasTold(const AlertInvocation& invocation) const;
    void tellDue();
    void tell(const AlertInvocation& invocation);
    void schedule();

    World world_;
    std::vector<AlertInvocation> armed_;
    std::vector<Told> told_;
    std::optional<platform::Date> wakeDate_;
};

}  // namespace hbr
