#include "EventOrder.h"

#include <algorithm>

namespace hbr {

void sortByStart(std::vector<Event>& events) {
    const auto start = [](const Event& event) { return event.startDate.timeIntervalSinceReferenceDate(); };
    // Stores answer by start already; moving events about is most of the cost.
    if (!std::ranges::is_sorted(events, {}, start)) std::ranges::stable_sort(events, {}, start);
}

}  // namespace hbr
