#include "Event/EventChoice.h"

#include "Agenda/AgendaEvents.h"

#include <Words/CompanionText.h>
#include <Words/EventMatch.h>
#include <Words/EventName.h>
#include <Words/NameProposal.h>
#include <Words/OneLine.h>

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/Reminder.h>
#include <HbrCore/Explanation/ListableItems.h>
#include <algorithm>

namespace hbr {

namespace {

constexpr int daysBefore = 7;
constexpr int daysAfter = 60;

[[noreturn]] void failNothing(const std::string& message) {
    throw CommandFailure(ExitCode::nothingThere, message);
}

std::vector<Event> everything(CommandContext& context) {
    CoreServices& core = context.core();
    const platform::Calendar& calendar = context.environment()->calendar;
    const platform::Date today = calendar.startOfDay(context.now());
    std::vector<Event> events;
    for (const auto& event : core.aggregatedEventStore().events(calendar.addingDays(today, -daysBefore),
                                                                calendar.addingDays(today, daysAfter))) {
        events.push_back(Event::fromCalendarEvent(*event, core.parser()));
    }
    const auto watched = core.settings().activeReminderListIdentifiers();
    for (const auto& task : core.aggregatedEventStore().remindersOfAllLists()) {
        if (std::ranges::find(watched, task->calendar->calendarIdentifier) == watched.end()) continue;
        if (auto event = Event::fromAppleReminder(*task, calendar)) events.push_back(*std::move(event));
    }
    for (const auto& reminder : core.reminders().reminders())
        events.push_back(Event::fromReminder(reminder, core.parser()));
    return events;
}

Event onlyOne(CommandContext& context, const std::vector<Event>& found, const std::string& several) {
    if (found.size() > 1) failNothing(several + eventList(context, found));
    return found.front();
}

Event underWay(CommandContext& context, const std::vector<AgendaEvent>& agenda) {
    std::vector<Event> current;
    for (const auto& one : agenda) {
        if (one.state == AgendaState::current) current.push_back(*one.event);
    }
    if (current.empty()) failNothing(companionText(*context.environment(), "Choice.nothingUnderWay"));
    return onlyOne(context, current, companionText(*context.environment(), "Choice.severalUnderWay"));
}

Event next(CommandContext& context, const std::vector<AgendaEvent>& agenda) {
    const auto first = std::find_if(agenda.begin(), agenda.end(),
                                    [](const AgendaEvent& one) { return one.state != AgendaState::current; });
    if (first == agenda.end()) failNothing(companionText(*context.environment(), "Choice.nothingComing"));
    return *first->event;
}

std::vector<std::string> titles(const std::vector<Event>& events) {
    std::vector<std::string> list;
    for (const auto& event : events) {
        if (event.title && std::find(list.begin(), list.end(), *event.title) == list.end()) {
            list.push_back(*event.title);
        }
    }
    return list;
}

}  // namespace

std::string eventList(CommandContext& context, const std::vector<Event>& events) {
    std::string list;
    for (const auto& event : events) {
        list += "\n  ";
        list += event.startDate == undated
                    ? companionText(*context.environment(), "Event.noDate")
                    : formattedStartTimeAndDate(event, context.core().formatters(), context.now());
        list += "  " + titleOf(event, *context.environment());
        if (event.calendarName) list += "  [" + onOneLine(*event.calendarName) + "]";
        list += "  (" + event.id + ")";
    }
    return list;
}

Event chosenEvent(CommandContext& context, const std::string& wanted) {
    const auto agenda = agendaEvents(context, std::nullopt);
    if (wanted == "now") return underWay(context, agenda);
    if (wanted == "next") return next(context, agenda);

    std::vector<Event> candidates;
    for (const auto& one : agenda)
        candidates.push_back(*one.event);
    auto found = matchingEvents(candidates, wanted, context.now());
    if (found.empty()) {
        candidates = everything(context);
        found = matchingEvents(candidates, wanted, context.now());
    }
    if (found.empty()) {
        CoreServices& core = context.core();
        const auto stored = core.aggregatedEventStore().eventWithIdentifier(wanted);
        if (stored) return Event::fromCalendarEvent(*stored, core.parser());
        failNothing(companionText(*context.environment(), "Choice.noMatch", {wanted}) +
                    nameProposal(*context.environment(), wanted, titles(candidates)));
    }
    return onlyOne(context, found, companionText(*context.environment(), "Choice.severalMatch", {wanted}));
}

}  // namespace hbr
