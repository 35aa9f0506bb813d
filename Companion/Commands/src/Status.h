#pragma once

#include "AgendaEvents.h"

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
    /// The one shown: the first pending event, else of those under way the one that began last, else the
    /// next; nothing in the states none and problem.
    std::optional<Event> event;
    /// Of a current event, in percent; else 0.
    int percentage = 0;
    /// In a few words what is wrong; empty but in the state problem.
    std::string problem;
    /// Further lines, each about an account that cannot be read or what to do.
    std::vector<std::string> remarks;
    /// Everything that the widgets would show.
    std::vector<AgendaEvent> agenda;
    /// When it was read, and when it or a text made from it is outdated.
    platform::Date now;
    std::shared_ptr<platform::ChangeMoments> changes = std::make_shared<platform::ChangeMoments>();

    platform::ClockReading clock() const { return {now, changes.get()}; }
};

/// From the manager's lists as they are. `within`: seconds; what begins later is not shown.
Status currentStatus(const CoreServices& core, std::optional<double> within);

/// Values of the placeholders; all empty but the title (the problem's words) and the state without an event.
StatusTemplate::Values statusValues(const Status& status, const CoreServices& core);

/// Lines for a tooltip: the agenda's first events, then the remarks.
std::string statusTooltip(const Status& status, const CoreServices& core);

}  // namespace hbr
