#include "AlertCenter.h"

#include "AlertMessage.h"

#include <HbrCore/Scheduling/AlertSchedule.h>

#include <utility>

namespace hbr {

AlertCenter::AlertCenter(CoreServices& core, std::unique_ptr<platform::DesktopNotifications> notifications,
                         Actions actions)
    : core_(core),
      notifications_(std::move(notifications)),
      actions_(std::move(actions)),
      timer_([this] { watch_->wake(); }),
      watch_(std::make_shared<AlertWatch>(
          AlertWatch::World{.clock = core.environment()->clock,
                            .wakeAt = [this](std::optional<platform::Date> date) { timer_.set(date); },
                            .due = [this](const AlertInvocation& one) { present(one); },
                            .snoozeRemoved = [this](const AlertInvocation& one) { withdraw(one.event); }})) {
    core_.manager().setDelegate(watch_);
}

AlertCenter::~AlertCenter() = default;

void AlertCenter::catchUp() {
    std::vector<AlertInvocation> missed;
    const auto now = core_.environment()->now();
    const auto add = [&](std::vector<Event> events) {
        for (Event& event : events)
            missed.push_back({.date = now, .event = std::move(event), .isSnooze = false});
    };
    add(core_.manager().pendingEvents());
    add(core_.manager().pendingAppleReminderEvents());
    watch_->catchUp(missed);
}

void AlertCenter::clockChanged() {
    watch_->wake();
}

void AlertCenter::present(const AlertInvocation& invocation) {
    const Event& event = invocation.event;
    core_.manager().didHandleAlertInvocation(invocation);
    if (!actions_.showsNotifications() || isOver(event, core_.environment()->now())) return;
    const std::string tag = alertTag(event);
    shown_.insert_or_assign(tag, event);
    notifications_->show(tag, alertMessage(core_, event),
                         [this, event](const std::string& key, const std::optional<std::string>& token) {
                             if (token) actions_.useActivationToken(*token);
                             withdraw(event);
                             if (key == alertAction::join) return actions_.event.join(event);
                             if (key == alertAction::snooze)
                                 return actions_.event.snooze(event, core_.settings().defaultSnooze1());
                             if (key == alertAction::untilEvent)
                                 return actions_.event.snoozeUntilEvent(event);
                             actions_.preview(event);
                         });
}

void AlertCenter::withdraw(const Event& event) {
    const std::string tag = alertTag(event);
    shown_.erase(tag);
    notifications_->withdraw(tag);
}

void AlertCenter::presentOtherwise(const std::string& tag) {
    if (const auto missed = shown_.extract(tag)) actions_.preview(missed.mapped());
}

void AlertCenter::tidy() {
    const auto now = core_.environment()->now();
    std::erase_if(shown_, [&](const auto& one) {
        if (!isOver(one.second, now)) return false;
        notifications_->withdraw(one.first);
        return true;
    });
}

}  // namespace hbr
