#include "EventLists.h"

#include <algorithm>
#include <initializer_list>

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

void sortByStart(std::vector<Event>& events) {
    const auto start = [](const Event& event) { return event.startDate.timeIntervalSinceReferenceDate(); };
    // Stores answer by start already; moving events about is most of the cost.
    if (!std::ranges::is_sorted(events, {}, start)) std::ranges::stable_sort(events, {}, start);
}

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
