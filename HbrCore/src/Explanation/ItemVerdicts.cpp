#include "ItemVerdicts.h"

#include "CommandText.h"

#include <HbrUtils/CalendarItemReaders.h>

namespace hbr {

namespace {

std::string_view answerText(platform::EKParticipantStatus answer) {
    using enum platform::EKParticipantStatus;
    switch (answer) {
        case accepted:
            return "you accepted it";
        case declined:
            return "you declined it";
        case tentative:
            return "you answered \"maybe\"";
        case pending:
            return "you have not answered it yet";
        case delegated:
            return "you passed it on to someone else";
        case completed:
            return "your part in it is marked as completed";
        case inProcess:
            return "your part in it has begun";
        case unknown:
            break;
    }
    return "your answer to it is not known";
}

RuleVerdict answerVerdict(const RuleContext& context, const platform::EKEvent& event) {
    const auto* user = currentUser(event);
    if (!user) {
        return passes(ListingRule::answer,
                      event.attendees ? "you are not among those invited" : "it asks for no answer");
    }
    const std::string answer(answerText(user->participantStatus));
    if (isAttending(event, context.attendance)) return passes(ListingRule::answer, answer);
    if (isAttending(event, {context.attendance.showOnlyEventsWithAlert, false})) {
        return hides(ListingRule::answer, answer + ", and only invitations that you accepted are listed",
                     commandText({"settings", "set", "showOnlyAcceptedEvents", "false"}));
    }
    return hides(ListingRule::answer, answer + "; only another answer in your calendar program changes that");
}

RuleVerdict alarmVerdict(const RuleContext& context, const platform::EKEvent& event) {
    if (hasAlerts(event)) return passes(ListingRule::alarm, "it carries an alarm");
    if (!context.attendance.showOnlyEventsWithAlert) {
        return passes(ListingRule::alarm, "it carries no alarm, and needs none");
    }
    return hides(ListingRule::alarm, "it carries no alarm, and only events with an alarm are listed",
                 commandText({"settings", "set", "showOnlyEventsWithAlert", "false"}));
}

}  // namespace

void addItemVerdicts(const RuleContext& context, const platform::EKEvent& event,
                     std::vector<RuleVerdict>& verdicts) {
    verdicts.push_back(
        event.isAllDay ? hides(ListingRule::allDay,
                               "it is an all-day event, and those are never listed; with a time of day in "
                               "your calendar program it would be")
                       : passes(ListingRule::allDay, "it has a time of day"));
    verdicts.push_back(
        event.status == platform::EKEventStatus::canceled
            ? hides(ListingRule::cancelled, "it was cancelled; only its calendar can change that")
            : passes(ListingRule::cancelled, "it was not cancelled"));
    verdicts.push_back(answerVerdict(context, event));
    verdicts.push_back(alarmVerdict(context, event));
}

void addItemVerdicts(const RuleContext&, const platform::EKReminder& task,
                     std::vector<RuleVerdict>& verdicts) {
    verdicts.push_back(
        task.isCompleted
            ? hides(ListingRule::completed, "it is done; reopened in your task program it would be listed")
            : passes(ListingRule::completed, "it is not done yet"));
    if (!task.dueDate) {
        verdicts.push_back(
            hides(ListingRule::dueDate,
                  "it has no due date; with one, set in your task program, it would be listed"));
        return;
    }
    const bool hasTime = task.dueDateComponents && task.dueDateComponents->hour;
    verdicts.push_back(
        passes(ListingRule::dueDate, hasTime ? "it has a due date and time" : "it has a due date"));
    if (task.alarms) {
        verdicts.push_back(passes(ListingRule::alarm, task.alarms->empty()
                                                          ? "its due time stands for an alarm"
                                                          : "it carries an alarm"));
    } else {
        verdicts.push_back(
            hides(ListingRule::alarm,
                  "it is due on a day without a time and carries no alarm; with either, set in "
                  "your task program, it would be listed"));
    }
}

}  // namespace hbr
