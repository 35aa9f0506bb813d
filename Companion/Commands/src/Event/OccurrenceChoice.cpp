#include "Event/OccurrenceChoice.h"

#include "Alerts/ReminderText.h"

#include <When/MomentText.h>
#include <Words/CompanionText.h>

#include <map>
#include <set>

namespace hbr {

namespace {

/// Each occurrence with the starts that name it.
std::map<Occurrence, std::set<platform::Date>> candidates(CommandContext& context, const Event& series,
                                                          platform::Date day, bool isHidden) {
    const platform::Calendar& calendar = context.environment()->calendar;
    const CoreServices& core = context.core();
    const HiddenOccurrences hidden = core.hiddenOccurrences().of(series.id);
    std::map<Occurrence, std::set<platform::Date>> found;
    if (isHidden) {
        for (const Occurrence& one : hidden.all())
            found[one].insert(one.originalStart);
    }
    for (const auto& record :
         core.aggregatedEventStore().eventsOfAllCalendars(day, calendar.addingDays(day, 1))) {
        const auto one = Occurrence::of(*record);
        if (!one || one->eventIdentifier != series.id || (isHidden && !hidden.all().contains(*one))) continue;
        found[*one].insert({one->originalStart, record->startDate});
    }
    return found;
}

}  // namespace

Occurrence chosenOccurrence(CommandContext& context, const Event& series, const std::string& when,
                            bool isHidden) {
    const auto text = [&](std::string_view key) {
        return companionText(*context.environment(), key, {when});
    };
    const platform::Calendar& calendar = context.environment()->calendar;
    const auto moment = momentOf(when, calendar, context.now());
    if (!moment) throw CommandFailure(ExitCode::wrongUsage, text("Event.on.noTime"));
    const platform::Date day = calendar.startOfDay(*moment);
    std::string list;
    std::optional<Occurrence> chosen;
    std::size_t count = 0;
    for (const auto& [one, starts] : candidates(context, series, day, isHidden)) {
        bool isMeant = starts.contains(*moment);
        for (const platform::Date start : starts)
            isMeant = isMeant || (*moment == day && calendar.isSameDay(start, day));
        list += "\n  " + exactMoment(one.originalStart, *context.environment());
        if (!isMeant) continue;
        chosen = one;
        ++count;
    }
    if (count == 1) return *chosen;
    const char* problem = isHidden ? "Event.on.notHidden" : "Event.on.noOccurrence";
    if (count > 1) problem = "Event.on.several";
    if (!list.empty()) list = companionText(*context.environment(), "Event.on.thereAre") + list;
    throw CommandFailure(ExitCode::nothingThere, text(problem) + list);
}

}  // namespace hbr
