#include <DesktopHost/AlertWatch.h>

#include <algorithm>
#include <limits>

namespace hbr {

namespace {

/// For how long after alert and start a handled alert is remembered, in seconds: longer than an alert can be
/// found overdue, which is a day after the start.
constexpr double memory = 2 * 24 * 60 * 60;

/// Before any alert.
constexpr platform::Date always{std::numeric_limits<double>::lowest()};

}  // namespace

bool AlertWatch::wasHandled(const AlertInvocation& invocation) const {
    return handled_.contains(HandledAlert::of(invocation));
}

bool AlertWatch::hasAlerted(const Event& event) const {
    const auto first = handled_.lower_bound({event.id, event.startDate, always});
    return first != handled_.end() && first->eventId == event.id && first->start == event.startDate;
}

bool AlertWatch::hasAlertedAtAnyStart(const Event& event) const {
    const auto first = handled_.lower_bound({event.id, always, always});
    return first != handled_.end() && first->eventId == event.id;
}

void AlertWatch::handle(const std::vector<AlertInvocation>& invocations) {
    bool isAnyDue = false;
    for (const AlertInvocation& invocation : invocations) {
        if (!handled_.insert(HandledAlert::of(invocation)).second) continue;
        isAnyDue = true;
        world_.due(invocation);
    }
    if (!isAnyDue) return;
    const platform::Date now = world_.clock();
    std::erase_if(handled_, [&](const HandledAlert& one) {
        return now.timeIntervalSince(std::max(one.alert, one.start)) > memory;
    });
    world_.handled(handled());
}

void AlertWatch::handleDue() {
    const platform::Date now = world_.clock();
    std::vector<AlertInvocation> due;
    std::erase_if(armed_, [&](const AlertInvocation& one) {
        if (one.date > now) return false;
        due.push_back(one);
        return true;
    });
    // Handling one may lead to a reload, so the list is complete before.
    handle(due);
}

void AlertWatch::didUpdateInvocations(const std::vector<AlertInvocation>& invocations) {
    handleDue();
    armed_.clear();
    for (const AlertInvocation& invocation : invocations) {
        if (!wasHandled(invocation)) armed_.push_back(invocation);
    }
    handleDue();
    schedule();
}

void AlertWatch::didRemoveSnoozedInvocation(const AlertInvocation& invocation) {
    std::erase(armed_, invocation);
    schedule();
    world_.snoozeRemoved(invocation);
}

void AlertWatch::didFindOverdue(const std::vector<AlertInvocation>& invocations) {
    const platform::Date now = world_.clock();
    std::vector<AlertInvocation> due;
    for (const AlertInvocation& invocation : invocations) {
        const Event& event = *invocation.event;
        if (hasAlerted(event)) continue;
        // Snoozing an own reminder moves it. With a long lead its alert would be due again at once.
        const bool wasMoved = event.type == Event::EventType::hbrReminder && event.startDate > now &&
                              hasAlertedAtAnyStart(event);
        if (wasMoved) {
            armed_.push_back({.date = event.startDate, .event = invocation.event, .isSnooze = false});
        } else {
            due.push_back(invocation);
        }
    }
    handle(due);
    schedule();
}

void AlertWatch::wake() {
    wakeDate_.reset();
    handleDue();
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
