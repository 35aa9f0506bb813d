#include "EventOrder.h"

#include <algorithm>

namespace hbr {

namespace {

template <class List, class Start>
void sortStably(List& events, const Start& start) {
    // Stores answer by start already; moving events about is most of the cost.
    if (!std::ranges::is_sorted(events, {}, start)) std::ranges::stable_sort(events, {}, start);
}

}  // namespace

void sortByStart(std::vector<Event>& events) {
    sortStably(events, [](const Event& event) { return event.startDate.timeIntervalSinceReferenceDate(); });
}

void sortByStart(EventRefs& events) {
    sortStably(events,
               [](const EventRef& event) { return event->startDate.timeIntervalSinceReferenceDate(); });
}

}  // namespace hbr
