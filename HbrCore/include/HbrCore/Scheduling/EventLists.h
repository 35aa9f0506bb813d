#pragma once

#include <HbrCore/Events/EventRef.h>

#include <string_view>

namespace hbr {

/// The lists of one reload, which belong together. Constant once they are published; events are shared.
struct EventLists {
    EventRefs current;
    EventRefs scheduled;
    EventRefs pending;
    EventRefs snoozedPastAppleReminders;
    EventRefs pendingAppleReminders;
    /// Not one of the lists that are shown: events and own reminders to come whose alert is due or was, by
    /// start. With a lead over an hour, or with travel time, they are pending only later.
    EventRefs insideLead;

    /// Current, scheduled, pending, snoozed past and pending tasks, concatenated.
    EventRefs all() const;
    /// By start; equal starts keep the order pending, scheduled, pending task.
    EventRefs upcoming() const;
    /// By start; equal starts keep the order current, snoozed past task.
    EventRefs underWay() const;
    /// The first of `all` with that id; nullptr when there is none.
    EventRef find(std::string_view id) const;
};

}  // namespace hbr
