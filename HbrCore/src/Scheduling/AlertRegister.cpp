#include "AlertRegister.h"

#include <algorithm>
#include <utility>

namespace hbr {

namespace {

std::vector<AlertInvocation> invocations(const std::vector<ScheduledAlert>& alerts) {
    std::vector<AlertInvocation> list;
    list.reserve(alerts.size());
    for (const ScheduledAlert& alert : alerts)
        list.push_back(alert.invocation());
    return list;
}

}  // namespace

std::vector<AlertInvocation> AlertRegister::scheduled() const {
    std::lock_guard lock(mutex_);
    return invocations(scheduled_);
}

std::vector<AlertInvocation> AlertRegister::snoozed() const {
    std::lock_guard lock(mutex_);
    return snoozed_;
}

AlertRegister::Invocations AlertRegister::all() const {
    std::lock_guard lock(mutex_);
    if (!all_) {
        auto list = invocations(scheduled_);
        list.insert(list.end(), snoozed_.begin(), snoozed_.end());
        all_ = std::make_shared<const std::vector<AlertInvocation>>(std::move(list));
    }
    return all_;
}

void AlertRegister::replaceScheduled(std::vector<ScheduledAlert> alerts) {
    const auto isSame = [](const ScheduledAlert& a, const ScheduledAlert& b) {
        return a.date == b.date && (a.event == b.event || *a.event == *b.event);
    };
    std::lock_guard lock(mutex_);
    if (std::ranges::equal(scheduled_, alerts, isSame)) return;
    scheduled_.swap(alerts);
    all_.reset();
}

void AlertRegister::snooze(AlertInvocation invocation) {
    std::lock_guard lock(mutex_);
    if (std::ranges::find(snoozed_, invocation) != snoozed_.end()) return;
    snoozed_.push_back(std::move(invocation));
    all_.reset();
}

void AlertRegister::remove(const AlertInvocation& invocation) {
    std::lock_guard lock(mutex_);
    all_.reset();
    if (invocation.isSnooze) {
        const auto found = std::ranges::find(snoozed_, invocation);
        if (found != snoozed_.end()) snoozed_.erase(found);
    } else {
        const auto found = std::ranges::find_if(scheduled_, [&](const ScheduledAlert& alert) {
            return alert.date == invocation.date && *alert.event == invocation.event;
        });
        if (found != scheduled_.end()) scheduled_.erase(found);
    }
}

std::optional<AlertInvocation> AlertRegister::removeSnooze(std::string_view eventId) {
    std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(
        snoozed_, [&](const AlertInvocation& invocation) { return invocation.event.id == eventId; });
    if (found == snoozed_.end()) return std::nullopt;
    std::optional<AlertInvocation> removed(std::move(*found));
    snoozed_.erase(found);
    all_.reset();
    return removed;
}

}  // namespace hbr
