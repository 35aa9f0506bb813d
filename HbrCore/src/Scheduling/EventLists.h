#pragma once

#include <Foundation/Atomic.h>
#include <HbrCore/Events/Event.h>

#include <vector>

namespace hbr {

/// The five lists that a reload fills, each replaced as a whole.
struct EventLists {
    platform::Atomic<std::vector<Event>> current;
    platform::Atomic<std::vector<Event>> scheduled;
    platform::Atomic<std::vector<Event>> pending;
    platform::Atomic<std::vector<Event>> snoozedPastAppleReminders;
    platform::Atomic<std::vector<Event>> pendingAppleReminders;

    std::vector<Event> all() const;
    /// By start; equal starts keep the order pending, scheduled, pending task.
    std::vector<Event> upcoming() const;
    /// By start; equal starts keep the order current, snoozed past task.
    std::vector<Event> underWay() const;
};

}  // namespace hbr
