#include "EventLists.h"

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

std::vector<Event> copiedByStart(EventRefs events) {
    sortByStart(events);
    return copied(events);
}

}  // namespace

EventRefs references(std::vector<Event> events) {
    EventRefs list;
    list.reserve(events.size());
    for (Event& event : events)
        list.push_back(std::make_shared<const Event>(std::move(event)));
    return list;
}

std::vector<Event> copied(const EventRefs& events) {
    std::vector<Event> copies;
    copies.reserve(events.size());
    for (const EventRef& event : events)
        copies.push_back(*event);
    return copies;
}

std::vector<Event> EventLists::all() const {
    return copied(
        concatenated({&current, &scheduled, &pending, &snoozedPastAppleReminders, &pendingAppleReminders}));
}

std::vector<Event> EventLists::upcoming() const {
    return copiedByStart(concatenated({&pending, &scheduled, &pendingAppleReminders}));
}

std::vector<Event> EventLists::underWay() const {
    return copiedByStart(concatenated({&current, &snoozedPastAppleReminders}));
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

std::shared_ptr<const EventLists> PublishedLists::load() const {
    std::lock_guard lock(mutex_);
    return lists_;
}

bool PublishedLists::publish(std::uint64_t reload, EventLists lists) {
    auto next = std::make_shared<const EventLists>(std::move(lists));
    std::lock_guard lock(mutex_);
    lists_.swap(next);
    if (reload < newest_) return false;
    newest_ = reload;
    return true;
}

}  // namespace hbr
