#include "SnoozeRequest.h"

#include <HbrCore/DeepLinks/DesktopApplication.h>
#include <HbrCore/Events/EventLookup.h>

#include <charconv>
#include <cstdint>

namespace hbr {

void handleSnoozeRequest(CoreServices& core, AlertCenter& alerts, const std::string& eventId,
                         const std::string& how) {
    auto event = eventWithIdentifier(core, eventId);
    if (!event) {
        // Its file may have been written a moment ago.
        core.aggregatedEventStore().refreshData();
        event = eventWithIdentifier(core, eventId);
    }
    if (!event) {
        core.environment()->diagnostics->report(
            {.text = "snooze: no event has the identifier \"" + eventId + "\""});
        return;
    }
    auto& manager = core.manager();
    if (how == desktopApplication::clear) {
        manager.removeSnooze(*event);
        return manager.reloadEvents(true);
    }
    alerts.withdraw(*event);
    if (how == desktopApplication::untilStart) return manager.snoozeUntilTimeOfEvent(*event);
    std::int64_t minutes = 0;
    const auto end = std::from_chars(how.data(), how.data() + how.size(), minutes).ptr;
    if (end == how.data() + how.size() && minutes > 0) manager.snooze(*event, minutes);
}

}  // namespace hbr
