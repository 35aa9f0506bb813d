#include "ItemVerdicts.h"

#include "CommandText.h"

#include <HbrUtils/CalendarItemReaders.h>

namespace hbr {

namespace {

std::string answerName(platform::EKParticipantStatus answer) {
    using enum platform::EKParticipantStatus;
    switch (answer) {
        case accepted:
            return "answer.accepted";
        case declined:
            return "answer.declined";
        case tentative:
            return "answer.tentative";
        case pending:
            return "answer.pending";
        case delegated:
            return "answer.delegated";
        case completed:
            return "answer.completed";
        case inProcess:
            return "answer.inProcess";
        case unknown:
            break;
    }
    return "answer.unknown";
}

RuleVerdict answerVerdict(const RuleContext& context, const platform::EKEvent& event) {
    const auto* user = currentUser(event);
    if (!user) {
        return passes(ListingRule::answer, {event.attendees ? "answer.notInvited" : "answer.notAsked"});
    }
    const Reason answer{answerName(user->participantStatus)};
    if (isAttending(event, context.attendance)) return passes(ListingRule::answer, answer);
    if (isAttending(event, {context.attendance.showOnlyEventsWithAlert, false})) {
        return hides(ListingRule::answer, {"answer.onlyAccepted", {}, {answer}},
                     settingCommand(SettingsTable::showOnlyAcceptedEvents, "false"));
    }
    return hides(ListingRule::answer, {"answer.final", {}, {answer}});
}

RuleVerdict alarmVerdict(const RuleContext& context, const platform::EKEvent& event) {
    if (hasAlerts(event)) return passes(ListingRule::alarm, {"alarm.has"});
    if (!context.attendance.showOnlyEventsWithAlert) return passes(ListingRule::alarm, {"alarm.notNeeded"});
    return hides(ListingRule::alarm, {"alarm.missing"},
                 settingCommand(SettingsTable::showOnlyEventsWithAlert, "false"));
}

}  // namespace

void addItemVerdicts(const RuleContext& context, const platform::EKEvent& event,
                     std::vector<RuleVerdict>& verdicts) {
    verdicts.push_back(event.isAllDay ? hides(ListingRule::allDay, {"allDay.yes"})
                                      : passes(ListingRule::allDay, {"allDay.no"}));
    verdicts.push_back(event.status == platform::EKEventStatus::canceled
                           ? hides(ListingRule::cancelled, {"cancelled.yes"})
                           : passes(ListingRule::cancelled, {"cancelled.no"}));
    verdicts.push_back(answerVerdict(context, event));
    verdicts.push_back(alarmVerdict(context, event));
}

void addItemVerdicts(const RuleContext&, const platform::EKReminder& task,
                     std::vector<RuleVerdict>& verdicts) {
    verdicts.push_back(task.isCompleted ? hides(ListingRule::completed, {"completed.yes"})
                                        : passes(ListingRule::completed, {"completed.no"}));
    if (!task.dueDate) {
        verdicts.push_back(hides(ListingRule::dueDate, {"dueDate.missing"}));
        return;
    }
    const bool hasTime = task.dueDateComponents && task.dueDateComponents->hour;
    verdicts.push_back(passes(ListingRule::dueDate, {hasTime ? "dueDate.withTime" : "dueDate.withoutTime"}));
    verdicts.push_back(
        task.alarms ? passes(ListingRule::alarm, {task.alarms->empty() ? "alarm.dueTime" : "alarm.has"})
                    : hides(ListingRule::alarm, {"alarm.noDueTime"}));
}

}  // namespace hbr
