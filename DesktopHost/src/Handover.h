#pragma once

#include <DesktopHost/HandledAlerts.h>
#include <HbrCore/CoreServices.h>

#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// What a process that executes itself again keeps of the one before: the alerts that the user snoozed, with
/// the moment they are due again, and the alerts that were handled. Events are named, not written: the new
/// process reads its own.
struct Handover {
    std::vector<HandledAlert> snoozed;
    std::vector<HandledAlert> handled;

    static Handover of(const CalendarEventManager& manager, std::vector<HandledAlert> handled);

    std::string text() const;
    /// Nothing for a text that is none.
    static std::optional<Handover> parse(const std::string& text);

    /// The snoozed alerts whose events are still there.
    std::vector<AlertInvocation> invocations(const CoreServices& core) const;
};

/// Restarts this program with the same arguments; the new process finds the handover. Returns only
/// when that failed, with the reason.
std::string restartProgram(char** argv, const Handover& handover);
/// Of the process before, if there was one; once.
std::optional<Handover> takeHandover();

}  // namespace hbr
