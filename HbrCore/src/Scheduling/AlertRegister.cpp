#include "AlertRegister.h"

#include <algorithm>
#include <utility>

namespace hbr {

std::vector<AlertInvocation> AlertRegister::scheduled() const {
    std::lock_guard lock(mutex_);
    return scheduled_;
}

std::vector<AlertInvocation> AlertRegister::snoozed() const {
    std::lock_guard lock(mutex_);
    return snoozed_;
}

AlertRegister::Invocations AlertRegister::all() const {
    std::lock_guard lock(mutex_);
    if (!all_) {
        auto list = scheduled_;
        list.insert(list.end(), snoozed_.begin(), snoozed_.end());
        all_ = std::make_shared<const std::vector<AlertInvocation>>(std::move(list));
    }
    return all_;
}

void AlertRegister::replaceScheduled(std::vector<AlertInvocation> alerts) {
    std::lock_guard lock(mutex_);
    if (scheduled_ == alerts) return;
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
    auto& list = invocation.isSnooze ? snoozed_ : scheduled_;
    const auto found = std::ranges::find(list, invocation);
    if (found != list.end()) list.erase(found);
}

std::optional<AlertInvocation> AlertRegister::removeSnooze(std::string_view eventId) {
    std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(
        snoozed_, [&](const AlertInvocation& invocation) { return invocation.event->id == eventId; });
    if (found == snoozed_.end()) return std::nullopt;
    std::optional<AlertInvocation> removed(std::move(*found));
    snoozed_.erase(found);
    all_.reset();
    return removed;
}

}  // namespace hbr
