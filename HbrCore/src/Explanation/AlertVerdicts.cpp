#include "AlertVerdicts.h"

#include "CommandText.h"

#include <HbrCore/Events/EventTiming.h>
#include <HbrCore/Events/FilterRuleNames.h>

namespace hbr {

namespace {

constexpr std::int64_t mostDays = 365;

std::string_view frameName(TimeFrame frame) {
    return frame == TimeFrame::current ? "while it is under way" : "in its alert period";
}

/// For rules that act on what is ahead only.
RuleVerdict hidesAhead(ListingRule rule, TimeFrame frame, const std::string& detail, std::string command) {
    if (frame == TimeFrame::ahead) return hides(rule, detail, std::move(command));
    return {rule, RuleDecision::doesNotAct,
            detail + ", which does not count " + std::string(frameName(frame)), std::move(command)};
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
        const std::string verb = isAnyReminder(event) ? "it was due " : "it ended ";
        return hides(ListingRule::past, verb + context.when(event.endDate));
    }
    if (event.startDate > context.now) {
        const std::string verb = isAnyReminder(event) ? "it is due " : "it begins ";
        return passes(ListingRule::past, verb + context.when(event.startDate));
    }
    return passes(ListingRule::past, "it is under way until " + context.moment(event.endDate));
}

RuleVerdict daysVerdict(const RuleContext& context, platform::Date start, TimeFrame frame) {
    if (start <= context.window.end) return passes(ListingRule::days, "it lies within the days looked at");
    const std::int64_t distance = context.calendar.daysBetween(context.now, start);
    const std::string reach =
        context.settings->days <= 0
            ? "only the rest of today is looked at"
            : "only today and " + countedDays(context.settings->days) + " after it are looked at";
    const std::string detail = "it begins in " + countedDays(distance) + ", and " + reach;
    if (distance > mostDays) {
        return hides(ListingRule::days, detail + "; at most a year can be looked ahead");
    }
    return hidesAhead(ListingRule::days, frame, detail,
                      commandText({"settings", "set", "upcomingEventsDaysFilter", std::to_string(distance)}));
}

template <class Item>
RuleVerdict excludeRulesVerdict(const RuleContext& context, const Item& item, TimeFrame frame) {
    if (!context.matcher.matchesAny(item)) {
        return passes(ListingRule::excludeRules,
                      context.rules.empty() ? "there are no exclude rules" : "no exclude rule hits it");
    }
    std::vector<std::string> command = {"rules", "remove"};
    std::string names;
    for (std::size_t i = 0; i < context.rules.size(); ++i) {
        if (!matches(item, context.rules[i], context.calendar)) continue;
        const std::string number = std::to_string(i + 1);
        names += (names.empty() ? "" : " and ") + ("rule " + number) + " (" +
                 displayText(context.rules[i], *context.core.environment()) + ")";
        command.push_back(number);
    }
    const std::string verb = command.size() > 3 ? " leave it out" : " leaves it out";
    return hidesAhead(ListingRule::excludeRules, frame, "exclude " + names + verb, commandText(command));
}

template RuleVerdict excludeRulesVerdict(const RuleContext&, const platform::EKEvent&, TimeFrame);
template RuleVerdict excludeRulesVerdict(const RuleContext&, const platform::EKReminder&, TimeFrame);

RuleVerdict exclusionVerdict(const RuleContext& context, const Event& event, TimeFrame frame) {
    const auto settings = context.settingsOf(event);
    if (!settings || !settings->isExcluded) {
        return passes(ListingRule::exclusion, "you did not leave it out");
    }
    const std::string detail = event.isRecurring ? "you left out its whole series" : "you left it out";
    std::string command = commandText({"event", "set", event.id, "--include"});
    // The one rule of these that the alert period knows.
    if (frame == TimeFrame::pending) return hides(ListingRule::exclusion, detail, std::move(command));
    return hidesAhead(ListingRule::exclusion, frame, detail, std::move(command));
}

RuleVerdict callVerdict(const RuleContext& context, const Event& event, TimeFrame frame) {
    if (!event.videoConferenceLinks.empty()) return passes(ListingRule::call, "it has a conference link");
    if (hasWantedCall(event, context.alertSettings)) {
        return passes(ListingRule::call, "it has no conference link, and needs none");
    }
    return hidesAhead(ListingRule::call, frame,
                      "it has no conference link, and only events with one are listed",
                      commandText({"settings", "set", "showOnlyEventsWithVideoConference", "false"}));
}

void addLeadVerdicts(const RuleContext& context, const Event& event, TimeFrame frame,
                     std::vector<RuleVerdict>& verdicts) {
    if (frame == TimeFrame::current) return;
    const auto settings = context.settingsOf(event);
    const double lead = alertOffset(static_cast<double>(context.alertSettings.timeOffsetSeconds), settings);
    const double travel = context.alertSettings.includeTravelTime ? event.travelTime : 0;
    const platform::Date alert = event.startDate.addingTimeInterval(-lead - travel);
    if (alert >= context.now) {
        verdicts.push_back(passes(
            ListingRule::lead,
            (isListable(verdicts) ? "its alert comes " : "its alert would come ") + context.when(alert)));
        return;
    }
    if (isInAlertPeriod(context, event, settings)) {
        verdicts.push_back(passes(ListingRule::lead, "its alert was due " + context.when(alert) +
                                                         "; its alert period runs until it begins"));
        return;
    }
    constexpr double longestLead = AggregatedEventStore::pendingWindow;
    const platform::Date leadStart = event.startDate.addingTimeInterval(-lead);
    const bool isLeadTooLong = leadStart < context.now;
    if (isLeadTooLong) {
        const bool isOwn = settings && settings->usesCustomTimeOffset;
        verdicts.push_back(hides(
            ListingRule::lead,
            "its alert, with a lead of " + context.duration(lead) + ", was due " + context.when(leadStart) +
                "; with a lead over an hour it is in no list from then until an hour before its start",
            isOwn ? commandText({"event", "set", event.id, "--lead", "1h"})
                  : commandText({"settings", "set", "timeOffsetSeconds", "1h"})));
    } else {
        verdicts.push_back(passes(ListingRule::lead, "its lead begins " + context.when(leadStart)));
    }
    const platform::Date listedFrom =
        isLeadTooLong ? event.startDate.addingTimeInterval(-longestLead) : leadStart;
    const platform::Date alertWithTravel = listedFrom.addingTimeInterval(-travel);
    if (travel > 0 && alertWithTravel < context.now) {
        verdicts.push_back(hides(ListingRule::travelTime,
                                 "its travel time of " + context.duration(travel) +
                                     " brought the alert forward to " + context.moment(alertWithTravel) +
                                     "; from then until " + context.moment(listedFrom) + " it is in no list",
                                 commandText({"settings", "set", "includeTravelTime", "false"})));
    }
}

RuleVerdict reminderLeadVerdict(const RuleContext& context, const Reminder& reminder) {
    const double lead = static_cast<double>(reminder.timeOffsetSeconds());
    const platform::Date alert = reminder.date().addingTimeInterval(-lead);
    if (alert > context.now) {
        return passes(ListingRule::lead, std::string("its alert comes ") + context.when(alert));
    }
    return hides(ListingRule::lead,
                 "its alert was due " + context.when(alert) +
                     ", and a reminder of your own is in no list after its alert",
                 commandText({"reminders", "edit", reminder.id(), "--lead", "0"}));
}

}  // namespace hbr
