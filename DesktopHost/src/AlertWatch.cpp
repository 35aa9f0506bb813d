#include <DesktopHost/AlertWatch.h>

#include <algorithm>

namespace hbr {

namespace {

/// For how long a told alert is remembered, in seconds; one that comes back does so within a reload.
constexpr double memory = 24 * 60 * 60;

AlertWatch::Told recordOf(const AlertInvocation& invocation) {
    return {invocation.event.id, invocation.event.startDate, invocation.date, invocation.isSnooze};
}

}  // namespace

bool AlertWatch::wasTold(const AlertInvocation& invocation) const {
    return std::ranges::find(told_, recordOf(invocation)) != told_.end();
}

void AlertWatch::tell(const AlertInvocation& invocation) {
    if (wasTold(invocation)) return;
    told_.push_back(recordOf(invocation));
    world_.due(invocation);
}

void AlertWatch::tellDue() {
    const platform::Date now = world_.clock();
    std::vector<AlertInvocation> due;
    std::erase_if(armed_, [&](const AlertInvocation& one) {
        if (one.date > now) return false;
        due.push_back(one);
        return true;
    });
    // Telling one may lead to a reload, so the list is complete before.
    for (const AlertInvocation& invocation : due)
        tell(invocation);
    std::erase_if(told_, [&](const Told& one) { return now.timeIntervalSince(one.alert) > memory; });
}

void AlertWatch::didUpdateInvocations(const std::vector<AlertInvocation>& invocations) {
    tellDue();
    armed_.clear();
    for (const AlertInvocation& invocation : invocations) {
        if (!wasTold(invocation)) armed_.push_back(invocation);
    }
    tellDue();
    schedule();
}

void AlertWatch::didRemoveSnoozedInvocation(const AlertInvocation& invocation) {
    std::erase(armed_, invocation);
    schedule();
    world_.snoozeRemoved(invocation);
}

void AlertWatch::catchUp(const std::vector<AlertInvocation>& invocations) {
    const platform::Date now = world_.clock();
    for (const AlertInvocation& invocation : invocations) {
        if (invocation.date > now) continue;
        const bool isKnown = std::ranges::any_of(told_, [&](const Told& one) {
            return one.eventId == invocation.event.id && one.start == invocation.event.startDate;
        });
        if (!isKnown) tell(invocation);
    }
}

void AlertWatch::wake() {
    wakeDate_.reset();
    tellDue();
    schedule();
}

void AlertWatch::schedule() {
    std::optional<platform::Date> next;
    for (const AlertInvocation& invocation : armed_) {
        if (!next || invocation.date < *next) next = invocation.date;
    }
    if (next == wakeDate_) return;
    wakeDate_ = next;
    world_.wakeAt(next);
}

}  // namespace hbr
