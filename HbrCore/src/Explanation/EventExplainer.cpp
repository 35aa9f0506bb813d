#include <HbrCore/Explanation/EventExplainer.h>

#include "AlertVerdicts.h"
#include "ItemVerdicts.h"
#include "SourceVerdicts.h"

namespace hbr {

namespace {

using platform::EKEventRef;
using platform::EKReminderRef;

/// The event of a task, which may lack what a listed one has.
Event eventOf(const RuleContext& context, const platform::EKReminder& task) {
    if (auto event = Event::fromAppleReminder(task, context.calendar)) return *std::move(event);
    platform::EKReminder dated = task;
    dated.dueDateComponents = context.calendar.components(task.dueDate.value_or(context.now));
    return *Event::fromAppleReminder(dated, context.calendar);
}

/// The state of what nothing hides so far, by what a reload would make of it.
template <class Item>
void setState(const RuleContext& context, const Item& item, TimeFrame frame, EventExplanation& explanation) {
    switch (frame) {
        case TimeFrame::over:
            return;
        case TimeFrame::current:
            explanation.state = ListedState::current;
            return;
        case TimeFrame::pending:
            explanation.state = ListedState::pending;
            return;
        case TimeFrame::ahead:
            break;
    }
    std::vector<AlertInvocation> alerts;
    context.schedule.append(std::vector<Item>{item}, alerts);
    if (alerts.empty()) return;
    explanation.state = ListedState::upcoming;
    explanation.alertDate = alerts.front().date;
}

}  // namespace

struct EventExplainer::State : RuleContext {
    using RuleContext::RuleContext;

    EventExplanation explain(const EKEventRef& event) const {
        EventExplanation result;
        result.event = Event::fromCalendarEvent(*event, core.parser());
        auto& verdicts = result.verdicts;
        addScreenshotVerdict(*this, verdicts);
        verdicts.push_back(watchedVerdict(*this, *event->calendar));
        addDelegatedVerdict(*event->calendar, verdicts);
        addDuplicateVerdict(*this, *event, verdicts);
        addItemVerdicts(*this, *event, verdicts);
        addTimeVerdicts(*event, result, [&](TimeFrame frame) {
            verdicts.push_back(callVerdict(*this, *result.event, frame));
        });
        if (isListable(verdicts)) setState(*this, event, timeFrame(*this, *result.event), result);
        return result;
    }

    EventExplanation explain(const EKReminderRef& task) const {
        EventExplanation result;
        result.event = eventOf(*this, *task);
        auto& verdicts = result.verdicts;
        addScreenshotVerdict(*this, verdicts);
        verdicts.push_back(watchedVerdict(*this, *task->calendar));
        addDelegatedVerdict(*task->calendar, verdicts);
        addItemVerdicts(*this, *task, verdicts);
        if (!task->dueDate) return result;
        addTimeVerdicts(*task, result, [](TimeFrame) {});
        if (isListable(verdicts)) setState(*this, task, timeFrame(*this, *result.event), result);
        return result;
    }

    EventExplanation explain(const Reminder& reminder) const {
        EventExplanation result;
        result.event = Event::fromReminder(reminder, core.parser());
        auto& verdicts = result.verdicts;
        addScreenshotVerdict(*this, verdicts);
        if (reminder.date() <= now) {
            verdicts.push_back(
                hides(ListingRule::past, {"past.wasDue", {ReasonMoment{reminder.date(), true}}}));
            return result;
        }
        verdicts.push_back(passes(ListingRule::past, {"past.isDue", {ReasonMoment{reminder.date(), true}}}));
        verdicts.push_back(daysVerdict(*this, reminder.date(), TimeFrame::ahead));
        verdicts.push_back(reminderLeadVerdict(*this, reminder));
        if (isListable(verdicts)) setState(*this, reminder, TimeFrame::ahead, result);
        return result;
    }

    /// What the moment, rules and alerts decide. `addOwn`: verdicts of this kind of item alone.
    template <class Item, class AddOwn>
    void addTimeVerdicts(const Item& item, EventExplanation& result, AddOwn addOwn) const {
        const Event& event = *result.event;
        auto& verdicts = result.verdicts;
        verdicts.push_back(pastVerdict(*this, event));
        const TimeFrame frame = timeFrame(*this, event);
        if (frame == TimeFrame::over) return;
        verdicts.push_back(daysVerdict(*this, event.startDate, frame));
        verdicts.push_back(excludeRulesVerdict(*this, item, frame));
        verdicts.push_back(exclusionVerdict(*this, item, event, frame));
        addOwn(frame);
        addLeadVerdicts(*this, event, frame, verdicts);
    }
};

EventExplainer::EventExplainer(const CoreServices& core, std::set<std::string> decided)
    : state_(std::make_unique<const State>(core, std::move(decided))) {}

EventExplainer::~EventExplainer() = default;

EventExplanation EventExplainer::explain(const ListableItem& item) const {
    return std::visit([this](const auto& one) { return state_->explain(one); }, item);
}

}  // namespace hbr
