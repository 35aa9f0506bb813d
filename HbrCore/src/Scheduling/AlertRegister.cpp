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

std::vector<AlertInvocation> AlertRegister::all() const {
    std::lock_guard lock(mutex_);
    auto invocations = scheduled_;
    invocations.insert(invocations.end(), snoozed_.begin(), snoozed_.end());
    return invocations;
}

void AlertRegister::replaceScheduled(std::vector<AlertInvocation> invocations) {
    std::lock_guard lock(mutex_);
    scheduled_.swap(invocations);
}

void AlertRegister::snooze(AlertInvocation invocation) {
    std::lock_guard lock(mutex_);
    if (std::ranges::find(snoozed_, invocation) == snoozed_.end()) snoozed_.push_back(std::move(invocation));
}

void AlertRegister::remove(const AlertInvocation& invocation) {
    std::lock_guard lock(mutex_);
    auto& list = invocation.isSnooze ? snoozed_ : scheduled_;
    if (const auto found = std::ranges::find(list, invocation); found != list.end()) list.erase(found);
}

std::optional<AlertInvocation> AlertRegister::removeSnooze(std::string_view eventId) {
    std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(
        snoozed_, [&](const AlertInvocation& invocation) { return invocation.event.id == eventId; });
    if (found == snoozed_.end()) return std::nullopt;
    std::optional<AlertInvocation> removed(std::move(*found));
    snoozed_.erase(found);
    return removed;
}

}  // namespace hbr
