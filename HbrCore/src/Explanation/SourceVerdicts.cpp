#include "SourceVerdicts.h"

#include "CommandText.h"

#include <HbrUtils/CalendarItemReaders.h>

#include <algorithm>

namespace hbr {

using platform::EKCalendar;
using platform::EKEntityType;

namespace {

std::string qualifiedName(const EKCalendar& calendar) {
    return (calendar.source ? calendar.source->title + "/" : "") + calendar.title;
}

/// "account/title" where it means this calendar alone, else the identifier.
std::string nameForCommand(const RuleContext& context, const EKCalendar& calendar) {
    const std::string name = qualifiedName(calendar);
    const auto all = context.core.aggregatedEventStore().calendars(calendar.entityType);
    const auto meant = std::ranges::count_if(
        all, [&](const auto& other) { return other->title == name || qualifiedName(*other) == name; });
    return meant == 1 && !name.starts_with('-') ? name : calendar.calendarIdentifier;
}

}  // namespace

void addScreenshotVerdict(const RuleContext& context, std::vector<RuleVerdict>& verdicts) {
    if (!context.settings->isScreenshotMode) return;
    verdicts.push_back(hides(ListingRule::screenshotMode, {"demonstration"},
                             settingCommand(SettingsTable::debugScreenshotMode, "false")));
}

RuleVerdict watchedVerdict(const RuleContext& context, const EKCalendar& calendar) {
    const bool isEvents = calendar.entityType == EKEntityType::event;
    const auto& watched = isEvents ? context.watchedCalendars : context.watchedLists;
    const auto reason = [&](const char* what) {
        return Reason{std::string(isEvents ? "calendar." : "taskList.") + what, {qualifiedName(calendar)}};
    };
    if (watched.contains(calendar.calendarIdentifier)) {
        return passes(ListingRule::calendar, reason("watched"));
    }
    if (isSubscribedHolidayCalendar(calendar)) return hides(ListingRule::calendar, reason("holidays"));
    if (calendar.type == platform::EKCalendarType::birthday) {
        return hides(ListingRule::calendar, reason("birthdays"));
    }
    const std::string command = commandText(
        {isEvents ? "calendars" : "reminder-lists", "activate", nameForCommand(context, calendar)});
    const bool isDecided = context.decided.contains(calendar.calendarIdentifier);
    return hides(ListingRule::calendar, reason(isDecided ? "notWatched" : "new"), command);
}

void addDelegatedVerdict(const EKCalendar& calendar, std::vector<RuleVerdict>& verdicts) {
    if (!isDelegate(calendar)) return;
    const std::string account = calendar.source ? calendar.source->title : "";
    verdicts.push_back(calendar.entityType == EKEntityType::reminder
                           ? hides(ListingRule::delegated, {"delegated.tasks", {account}})
                           : passes(ListingRule::delegated, {"delegated.events", {account}}));
}

void addDuplicateVerdict(const RuleContext& context, const platform::EKEvent& event,
                         std::vector<RuleVerdict>& verdicts) {
    if (!isDelegate(*event.calendar) ||
        !context.watchedCalendars.contains(event.calendar->calendarIdentifier))
        return;
    const auto listed = context.core.aggregatedEventStore().events(event.startDate, event.endDate);
    const auto same = [&](const auto& other) {
        return other->eventIdentifier == event.eventIdentifier && other->startDate == event.startDate;
    };
    if (std::ranges::any_of(listed, same)) return;
    const auto twin = std::ranges::find_if(listed, [&](const auto& other) {
        return other->title == event.title && other->startDate == event.startDate &&
               other->endDate == event.endDate;
    });
    verdicts.push_back(hides(ListingRule::duplicate,
                             twin == listed.end()
                                 ? Reason{"duplicate.somewhere"}
                                 : Reason{"duplicate.calendar", {qualifiedName(*(*twin)->calendar)}}));
}

}  // namespace hbr
