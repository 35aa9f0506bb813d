#include "AlertVerdicts.h"

#include "CommandText.h"

#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Events/FilterRuleNames.h>

namespace hbr {

namespace {

ReasonMoment at(platform::Date date) {
    return {date, true};
}

/// For rules that act on what is ahead only.
RuleVerdict hidesAhead(ListingRule rule, TimeFrame frame, Reason reason, std::string command) {
    if (frame == TimeFrame::ahead) return hides(rule, std::move(reason), std::move(command));
    const char* exemption = frame == TimeFrame::current ? "exempt.underWay" : "exempt.pending";
    return {rule, RuleDecision::doesNotAct, {exemption, {}, {std::move(reason)}}, std::move(command)};
}

/// As far as the moment decides it.
bool isInAlertPeriod(const RuleContext& context, const Event& event, std::optional<EventSettings> settings) {
    if (settings) settings->isExcluded = false;
    const bool isNear =
        event.startDate <= context.now.addingTimeInterval(AggregatedEventStore::pendingWindow);
    const double offset = static_cast<double>(context.alertSettings.timeOffsetSeconds);
    return isNear && isPending(event, offset, settings, context.now);
}

}  // namespace

TimeFrame timeFrame(const RuleContext& context, const Event& event) {
    if (event.type == Event::EventType::calendarEvent && isCurrentEvent(event, context.now)) {
        return TimeFrame::current;
    }
    if (event.endDate < context.now) return TimeFrame::over;
    return isInAlertPeriod(context, event, context.settingsOf(event)) ? TimeFrame::pending : TimeFrame::ahead;
}

RuleVerdict pastVerdict(const RuleContext& context, const Event& event) {
    if (timeFrame(context, event) == TimeFrame::over) {
        return hides(ListingRule::past,
                     {isAnyReminder(event) ? "past.wasDue" : "past.ended", {at(event.endDate)}});
    }
    if (event.startDate > context.now) {
        return passes(ListingRule::past,
                      {isAnyReminder(event) ? "past.isDue" : "past.begins", {at(event.startDate)}});
    }
    return passes(ListingRule::past, {"past.underWay", {ReasonMoment{event.endDate}}});
}

RuleVerdict daysVerdict(const RuleContext& context, platform::Date start, TimeFrame frame) {
    if (start <= context.window.end) return passes(ListingRule::days, {"days.within"});
    const std::int64_t distance = context.calendar.daysBetween(context.now, start);
    const std::int64_t days = context.settings->days;
    const std::vector<Reason> parts = {{"days.beginsIn", {distance}},
                                       days <= 0 ? Reason{"days.onlyToday"} : Reason{"days.only", {days}}};
    if (distance > SettingsTable::upcomingEventsDaysFilter.kind.last)
        return hides(ListingRule::days, {"days.beyondAYear", {}, parts});
    return hidesAhead(ListingRule::days, frame, {"days.beyond", {}, parts},
                      settingCommand(SettingsTable::upcomingEventsDaysFilter, std::to_string(distance)));
}

template <class Item>
RuleVerdict excludeRulesVerdict(const RuleContext& context, const Item& item, TimeFrame frame) {
    if (!context.matcher.matchesAny(item)) {
        return passes(ListingRule::excludeRules,
                      {context.rules.empty() ? "excludeRules.none" : "excludeRules.noneFits"});
    }
    std::vector<std::string> command = {"rules", "remove"};
    Reason rules;
    for (std::size_t i = 0; i < context.rules.size(); ++i) {
        if (!matches(item, context.rules[i], context.calendar)) continue;
        const std::string number = std::to_string(i + 1);
        Reason rule{"excludeRules.rule",
                    {number, displayText(context.rules[i], *context.core.environment())}};
        rules = command.size() == 2 ? std::move(rule)
                                    : Reason{"excludeRules.and", {}, {std::move(rules), std::move(rule)}};
        command.push_back(number);
    }
    const char* name = command.size() > 3 ? "excludeRules.several" : "excludeRules.one";
    return hidesAhead(ListingRule::excludeRules, frame, {name, {}, {std::move(rules)}}, commandText(command));
}

template RuleVerdict excludeRulesVerdict(const RuleContext&, const platform::EKEvent&, TimeFrame);
template RuleVerdict excludeRulesVerdict(const RuleContext&, const platform::EKReminder&, TimeFrame);

RuleVerdict exclusionVerdict(const RuleContext& context, const Event& event, TimeFrame frame) {
    const auto settings = context.settingsOf(event);
    if (!settings || !settings->isExcluded) {
        return passes(ListingRule::exclusion, {"exclusion.no"});
    }
    Reason reason{event.isRecurring ? "exclusion.series" : "exclusion.event"};
    std::string command = commandText({"event", "set", event.id, "--include"});
    // The one rule of these that the alert period knows.
    if (frame == TimeFrame::pending)
        return hides(ListingRule::exclusion, std::move(reason), std::move(command));
    return hidesAhead(ListingRule::exclusion, frame, std::move(reason), std::move(command));
}

RuleVerdict exclusionVerdict(const RuleContext& context, const platform::EKEvent& record, const Event& event,
                             TimeFrame frame) {
    if (!context.attendance.hiddenOccurrences.contains(record))
        return exclusionVerdict(context, event, frame);
    return hides(ListingRule::exclusion, {"exclusion.occurrence"},
                 commandText({"event", "set", event.id, "--include", "--on",
                              platform::formatRfc3339(*record.originalStart)}));
}

RuleVerdict callVerdict(const RuleContext& context, const Event& event, TimeFrame frame) {
    if (!event.videoConferenceLinks.empty()) return passes(ListingRule::call, {"call.has"});
    if (hasWantedCall(event, context.alertSettings)) {
        return passes(ListingRule::call, {"call.notNeeded"});
    }
    return hidesAhead(ListingRule::call, frame, {"call.missing"},
                      settingCommand(SettingsTable::showOnlyEventsWithVideoConference, "false"));
}

void addLeadVerdicts(const RuleContext& context, const Event& event, TimeFrame frame,
                     std::vector<RuleVerdict>& verdicts) {
    if (frame == TimeFrame::current) return;
    const auto settings = context.settingsOf(event);
    const double lead = alertOffset(static_cast<double>(context.alertSettings.timeOffsetSeconds), settings);
    const double travel = context.alertSettings.includeTravelTime ? event.travelTime : 0;
    const platform::Date alert = event.startDate.addingTimeInterval(-lead - travel);
    if (alert >= context.now) {
        verdicts.push_back(
            passes(ListingRule::lead, {isListable(verdicts) ? "lead.comes" : "lead.wouldCome", {at(alert)}}));
        return;
    }
    if (isInAlertPeriod(context, event, settings)) {
        verdicts.push_back(passes(ListingRule::lead, {"lead.runs", {at(alert)}}));
        return;
    }
    constexpr double longestLead = AggregatedEventStore::pendingWindow;
    const platform::Date leadStart = event.startDate.addingTimeInterval(-lead);
    const bool isLeadTooLong = leadStart < context.now;
    if (isLeadTooLong) {
        const bool isOwn = settings && settings->usesCustomTimeOffset;
        verdicts.push_back(hides(ListingRule::lead, {"lead.tooLong", {ReasonLength{lead}, at(leadStart)}},
                                 isOwn ? commandText({"event", "set", event.id, "--lead", "1h"})
                                       : settingCommand(SettingsTable::timeOffsetSeconds, "1h")));
    } else {
        verdicts.push_back(passes(ListingRule::lead, {"lead.begins", {at(leadStart)}}));
    }
    const platform::Date listedFrom =
        isLeadTooLong ? event.startDate.addingTimeInterval(-longestLead) : leadStart;
    const platform::Date alertWithTravel = listedFrom.addingTimeInterval(-travel);
    if (travel > 0 && alertWithTravel < context.now) {
        verdicts.push_back(
            hides(ListingRule::travelTime,
                  {"travelTime.early",
                   {ReasonLength{travel}, ReasonMoment{alertWithTravel}, ReasonMoment{listedFrom}}},
                  settingCommand(SettingsTable::includeTravelTime, "false")));
    }
}

RuleVerdict reminderLeadVerdict(const RuleContext& context, const Reminder& reminder) {
    const double lead = static_cast<double>(reminder.timeOffsetSeconds());
    const platform::Date alert = reminder.date().addingTimeInterval(-lead);
    if (alert > context.now) {
        return passes(ListingRule::lead, {"lead.comes", {at(alert)}});
    }
    return hides(ListingRule::lead, {"lead.ownReminder", {at(alert)}},
                 commandText({"reminders", "edit", reminder.id(), "--lead", "0"}));
}

}  // namespace hbr
