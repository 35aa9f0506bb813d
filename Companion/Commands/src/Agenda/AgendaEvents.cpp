#include "Agenda/AgendaEvents.h"

#include <algorithm>
#include <utility>

namespace hbr {

std::vector<AgendaEvent> agendaOf(const EventLists& lists) {
    std::vector<AgendaEvent> all;
    for (auto&& event : lists.underWay())
        all.push_back({AgendaState::current, std::move(event)});
    for (auto&& event : lists.upcoming()) {
        // An event whose alert is due now is in both the scheduled and the pending list; the lists share the
        // events.
        const bool isPending = std::ranges::find(lists.pending, event) != lists.pending.end() ||
                               std::ranges::any_of(lists.pendingAppleReminders,
                                                   [&](const EventRef& task) { return *task == *event; });
        all.push_back({isPending ? AgendaState::pending : AgendaState::upcoming, std::move(event)});
    }
    return all;
}

std::vector<AgendaEvent> agendaEvents(CommandContext& context, std::optional<int> days) {
    CoreServices& core = context.core();
    if (days) {
        ReloadSettings settings = *core.manager().reloadSettings();
        settings.days = *days;
        reloadAndWait(core, settings);
    } else {
        reloadAndWait(core);
    }
    return agendaOf(*core.manager().lists());
}

}  // namespace hbr
