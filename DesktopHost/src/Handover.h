#pragma once

#include <DesktopHost/AlertWatch.h>
#include <HbrCore/CoreServices.h>

#include <optional>
#include <string>
#include <vector>

namespace hbr {

/// What a process that executes itself anew keeps of the one before: alerts put off, alerts still to come
/// (one may fall due meanwhile), alerts told. Events are named, not written: the new process reads its own.
struct Handover {
    struct Alert {
        std::string eventId;
        platform::Date start;
        platform::Date date;
        bool isSnooze = false;
        friend bool operator==(const Alert&, const Alert&) = default;
    };
    std::vector<Alert> pending;
    std::vector<AlertWatch::Told> told;

    static Handover of(const CalendarEventManager& manager, const AlertWatch& watch);

    std::string text() const;
    /// Nothing for a text that is none.
    static std::optional<Handover> parse(const std::string& text);

    /// The alerts whose events are still there. `isSnooze`: those put off, else the others.
    std::vector<AlertInvocation> invocations(const CoreServices& core, bool isSnooze) const;
};

/// Executes this program anew with the same arguments; the new process finds the handover. Returns only
/// when that failed, with the reason.
std::string executeAnew(char** argv, const Handover& handover);
/// Of the process before, if there was one; once.
std::optional<Handover> takeHandover();

}  // namespace hbr
