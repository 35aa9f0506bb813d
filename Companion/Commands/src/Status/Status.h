#pragma once

#include "Agenda/AgendaEvents.h"

#include <Commands/StatusTemplate.h>
#include <TimeAndText/ClockReading.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace hbr {

enum class StatusState { current, pending, upcoming, none, problem };

std::string_view rawValue(StatusState state);

/// What a bar shows at a moment.
struct Status {
    StatusState state = StatusState::none;
    /// The event shown: the first pending one, else the current one that began last, else the next. Nothing
    /// in the states none and problem.
    std::optional<Event> event;
    /// Progress of a current event in percent, else 0.
    int percentage = 0;
    /// What is wrong, in a few words; empty except in the state problem.
    std::string problem;
    /// Further lines: accounts that cannot be read, and what to do.
    std::vector<std::string> remarks;
    /// Everything that the widgets would show.
    std::vector<AgendaEvent> agenda;
    /// When it was read, and when it or a text made from it becomes outdated.
    platform::Date now;
    std::shared_ptr<platform::ChangeMoments> changes = std::make_shared<platform::ChangeMoments>();

    platform::ClockReading clock() const { return {now, changes.get()}; }
};

/// From the manager's current lists. `within`: seconds; events that begin later are not shown.
Status currentStatus(const CoreServices& core, std::optional<double> within);

/// Values of the placeholders. Without an event only the state and the title (the problem) are set.
StatusTemplate::Values statusValues(const Status& status, const CoreServices& core);

/// Lines for a tooltip: the agenda's first events, then the remarks.
std::string statusTooltip(const Status& status, const CoreServices& core);

}  // namespace hbr
