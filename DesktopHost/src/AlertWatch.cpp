#include <DesktopHost/AlertWatch.h>

#include <algorithm>

namespace hbr {

namespace {

/// For how long after alert and start a handled alert is remembered, in seconds: longer than an alert can be
/// found overdue, which is a day after the start.
constexpr double memory = 2 * 24 * 60 * 60;

}  // namespace

bool AlertWatch::wasHandled(const AlertInvocation& invocation) const {
    return std::ranges::find(handled_, HandledAlert::of(invocation)) != handled_.end();
}

bool AlertWatch::hasAlerted(const Event& event) const {
    return std::ranges::any_of(handled_, [&](const HandledAlert& one) {
        return one.eventId == event.id && one.start == event.startDate;
    });
}

void AlertWatch::handle(const std::vector<AlertInvocation>& invocations) {
    bool isAnyDue = false;
    for (const AlertInvocation& invocation : invocations) {
        if (wasHandled(invocation)) continue;
        isAnyDue = true;
        handled_.push_back(HandledAlert::of(invocation));
        world_.due(invocation);
    }
    if (!isAnyDue) return;
    const platform::Date now = world_.clock();
    std::erase_if(handled_, [&](const HandledAlert& one) {
        return now.timeIntervalSince(std::max(one.alert, one.start)) > memory;
    });
    world_.handled(handled_);
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
        const Event& event = invocation.event;
        if (hasAlerted(event)) continue;
        // Snoozing an own reminder moves it. With a long lead its alert would be due again at once.
        const bool wasMoved =
            event.type == Event::EventType::hbrReminder && event.startDate > now &&
            std::ranges::any_of(handled_, [&](const HandledAlert& one) { return one.eventId == event.id; });
        if (wasMoved) {
            armed_.push_back({.date = event.startDate, .event = event, .isSnooze = false});
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
