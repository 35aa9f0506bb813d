#include <HbrCore/Scheduling/EventLists.h>

#include <initializer_list>
#include <utility>

#include "Events/EventOrder.h"

namespace hbr {

namespace {

EventRefs concatenated(std::initializer_list<const EventRefs*> lists) {
    std::size_t size = 0;
    for (const EventRefs* list : lists)
        size += list->size();
    EventRefs events;
    events.reserve(size);
    for (const EventRefs* list : lists)
        events.insert(events.end(), list->begin(), list->end());
    return events;
}

EventRefs byStart(EventRefs events) {
    sortByStart(events);
    return events;
}

}  // namespace

EventRefs EventLists::all() const {
    return concatenated({&current, &scheduled, &pending, &snoozedPastAppleReminders, &pendingAppleReminders});
}

EventRefs EventLists::upcoming() const {
    return byStart(concatenated({&pending, &scheduled, &pendingAppleReminders}));
}

EventRefs EventLists::underWay() const {
    return byStart(concatenated({&current, &snoozedPastAppleReminders}));
}

EventRef EventLists::find(std::string_view id) const {
    for (const EventRefs* list :
         {&current, &scheduled, &pending, &snoozedPastAppleReminders, &pendingAppleReminders}) {
        for (const EventRef& event : *list) {
            if (event->id == id) return event;
        }
    }
    return nullptr;
}

}  // namespace hbr
