#include "Status/Status.h"

#include <HbrUtils/DistanceTexts.h>
#include <Words/CompanionText.h>
#include <Words/EventName.h>
#include <Words/OneLine.h>

#include <HbrCore/Events/EventTexts.h>
#include <HbrCore/Events/EventTiming.h>
#include <algorithm>

namespace hbr {

namespace {

/// The first event of a state, in the agenda's order.
const AgendaEvent* firstOf(const std::vector<AgendaEvent>& agenda, AgendaState state) {
    const auto found =
        std::ranges::find_if(agenda, [state](const AgendaEvent& one) { return one.state == state; });
    return found == agenda.end() ? nullptr : &*found;
}

const AgendaEvent* lastBegun(const std::vector<AgendaEvent>& agenda) {
    const AgendaEvent* last = nullptr;
    for (const auto& one : agenda) {
        if (one.state != AgendaState::current) continue;
        if (!last || one.event->startDate > last->event->startDate) last = &one;
    }
    return last;
}

StatusState stateOf(AgendaState state) {
    switch (state) {
        case AgendaState::current:
            return StatusState::current;
        case AgendaState::pending:
            return StatusState::pending;
        case AgendaState::upcoming:
            break;
    }
    return StatusState::upcoming;
}

void addAccounts(Status& status, const CoreServices& core) {
    // Demonstration events come from no account.
    if (core.settings().debugScreenshotMode()) return;
    const auto reports = core.aggregatedEventStore().report();
    for (const auto& report : reports) {
        if (!report.readable)
            status.remarks.push_back(onOneLine(report.account.name + ": " + report.problem));
    }
    const bool canReadNone = status.remarks.size() == reports.size();
    const bool areAllDelegated = reports.empty() && core.aggregatedEventStore().hasDelegatedAccounts();
    if (areAllDelegated) {
        status.remarks = {companionText(*core.environment(), "Status.onlyDelegated")};
    } else if (reports.empty() && status.agenda.empty()) {
        status.problem = companionText(*core.environment(), "Status.noCalendars");
        status.remarks = {companionText(*core.environment(), "Status.noCalendars.advice")};
    } else if (!reports.empty() && canReadNone) {
        status.problem = companionText(*core.environment(), "Status.unreadable");
    }
    if (!status.problem.empty()) status.state = StatusState::problem;
}

/// Notes when events become pending, begin or end, since that changes what is shown.
void noteStates(const Status& status, const CoreServices& core) {
    const auto settings = core.manager().reloadSettings();
    const auto offset = static_cast<double>(settings->alerts.timeOffsetSeconds);
    for (const AgendaEvent& one : status.agenda) {
        isCurrentEvent(*one.event, status.clock());
        isPending(*one.event, offset, EventSettingsStore::find(settings->eventSettings, one.event->id),
                  status.clock());
    }
}

}  // namespace

std::string_view rawValue(StatusState state) {
    switch (state) {
        case StatusState::current:
            return "current";
        case StatusState::pending:
            return "pending";
        case StatusState::upcoming:
            return "upcoming";
        case StatusState::none:
            return "none";
        case StatusState::problem:
            return "problem";
    }
    return "";
}

Status currentStatus(const CoreServices& core, std::optional<double> within) {
    Status status;
    status.now = core.environment()->now();
    status.agenda = agendaOf(*core.manager().lists());
    noteStates(status, core);
    addAccounts(status, core);
    if (status.state == StatusState::problem) return status;

    const AgendaEvent* shown = firstOf(status.agenda, AgendaState::pending);
    if (!shown) shown = lastBegun(status.agenda);
    if (!shown) {
        shown = firstOf(status.agenda, AgendaState::upcoming);
        if (shown && within &&
            !status.clock().hasReached(shown->event->startDate.addingTimeInterval(-*within)))
            shown = nullptr;
    }
    if (!shown) return status;
    status.state = stateOf(shown->state);
    status.event = *shown->event;
    status.percentage = static_cast<int>(eventProgress(*shown->event, status.clock()) * 100);
    return status;
}

StatusTemplate::Values statusValues(const Status& status, const CoreServices& core) {
    StatusTemplate::Values values;
    values["state"] = rawValue(status.state);
    values["title"] = status.problem;
    if (!status.event) return values;

    const Event& event = *status.event;
    const Formatters& formatters = core.formatters();
    const platform::ClockReading clock = status.clock();
    const bool isCurrent = isCurrentEvent(event, clock) && !isAnyReminder(event);
    const platform::Date bound = isCurrent ? event.endDate : event.startDate;
    values["title"] = titleOf(event, *core.environment());
    values["when"] = shortRelativeText(bound, isCurrent, clock, formatters);
    values["compact"] = compactRelativeText(bound, isCurrent, clock, formatters);
    values["time"] = timesText(event, formatters, clock);
    values["start"] = formatters.timeOnly().string(event.startDate);
    values["end"] = formatters.timeOnly().string(event.endDate);
    values["location"] = onOneLine(event.location.value_or(""));
    values["calendar"] = onOneLine(event.calendarName.value_or(""));
    values["progress"] = std::to_string(status.percentage);
    values["id"] = event.id;
    auto call = defaultVideoConferenceLink(event, core.eventSettings().customSettings(event.id));
    if (!call && !event.videoConferenceLinks.empty()) call = event.videoConferenceLinks.front();
    if (call) {
        values["call"] = onOneLine(call->service.name);
        values["link"] = onOneLine(call->url.absoluteString());
    }
    return values;
}

std::string statusTooltip(const Status& status, const CoreServices& core) {
    constexpr std::size_t mostEvents = 10;
    constexpr std::size_t longestTitle = 60;
    std::vector<std::string> lines;
    if (!status.problem.empty()) lines.push_back(status.problem);
    const std::size_t count = status.problem.empty() ? std::min(status.agenda.size(), mostEvents) : 0;
    for (std::size_t i = 0; i < count; ++i) {
        const Event& event = *status.agenda[i].event;
        lines.push_back(timesText(event, core.formatters(), status.clock()) + "  " +
                        shortened(titleOf(event, *core.environment()), longestTitle));
    }
    if (count > 0 && status.agenda.size() > count)
        lines.push_back(companionText(*core.environment(), "Status.more",
                                      {static_cast<std::int64_t>(status.agenda.size() - count)}));
    lines.insert(lines.end(), status.remarks.begin(), status.remarks.end());

    std::string tooltip;
    for (const auto& line : lines)
        tooltip += (tooltip.empty() ? "" : "\n") + line;
    return tooltip;
}

}  // namespace hbr
