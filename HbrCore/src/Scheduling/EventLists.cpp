#include "EventLists.h"

#include <initializer_list>

#include "Events/EventOrder.h"

namespace hbr {

namespace {

using List = platform::Atomic<std::vector<Event>>;

std::vector<Event> concatenated(std::initializer_list<const List*> lists) {
    std::vector<Event> events;
    for (const List* list : lists) {
        const auto part = list->load();
        events.insert(events.end(), part->begin(), part->end());
    }
    return events;
}

std::vector<Event> sortedByStart(std::vector<Event> events) {
    sortByStart(events);
    return events;
}

}  // namespace

std::vector<Event> EventLists::all() const {
    return concatenated({&current, &scheduled, &pending, &snoozedPastAppleReminders, &pendingAppleReminders});
}

std::vector<Event> EventLists::upcoming() const {
    return sortedByStart(concatenated({&pending, &scheduled, &pendingAppleReminders}));
}

std::vector<Event> EventLists::underWay() const {
    return sortedByStart(concatenated({&current, &snoozedPastAppleReminders}));
}

}  // namespace hbr
