#include <HbrCore/Explanation/ListableItems.h>

#include <algorithm>

namespace hbr {

namespace {

Event outline(const std::string& id, Event::EventType type, const std::optional<std::string>& title,
              platform::Date start, platform::Date end) {
    Event event;
    event.id = id;
    event.type = type;
    event.title = title;
    event.startDate = start;
    event.endDate = end;
    return event;
}

Event outline(const platform::EKEventRef& event) {
    Event result = outline(event->eventIdentifier, Event::EventType::calendarEvent, event->title,
                           event->startDate, event->endDate);
    if (event->calendar) result.calendarName = event->calendar->title;
    return result;
}

Event outline(const platform::EKReminderRef& task) {
    const platform::Date due = task->dueDate.value_or(undated);
    Event result =
        outline(task->calendarItemIdentifier, Event::EventType::appleReminder, task->title, due, due);
    if (task->calendar) result.calendarName = task->calendar->title;
    return result;
}

Event outline(const Reminder& reminder) {
    return outline(reminder.id(), Event::EventType::hbrReminder, reminder.title(), reminder.date(),
                   reminder.date());
}

}  // namespace

std::vector<ListableItem> listableItems(const CoreServices& core, platform::Date from, platform::Date to) {
    std::vector<ListableItem> items;
    for (auto& event : core.aggregatedEventStore().eventsOfAllCalendars(from, to)) {
        const bool endsBefore = event->endDate <= from && event->startDate < from;
        if (!endsBefore && event->startDate < to) items.emplace_back(std::move(event));
    }
    for (auto& task : core.aggregatedEventStore().remindersOfAllLists()) {
        if (task->dueDate && *task->dueDate >= from && *task->dueDate < to)
            items.emplace_back(std::move(task));
    }
    for (auto& reminder : core.reminders().reminders()) {
        if (reminder.date() >= from && reminder.date() < to) items.emplace_back(std::move(reminder));
    }
    std::ranges::stable_sort(items, {}, [](const ListableItem& item) {
        return outlineOf(item).startDate.timeIntervalSinceReferenceDate();
    });
    return items;
}

std::vector<ListableItem> undatedTasks(const CoreServices& core) {
    std::vector<ListableItem> items;
    for (auto& task : core.aggregatedEventStore().remindersOfAllLists()) {
        if (!task->dueDate) items.emplace_back(std::move(task));
    }
    return items;
}

Event outlineOf(const ListableItem& item) {
    return std::visit([](const auto& one) { return outline(one); }, item);
}

}  // namespace hbr
