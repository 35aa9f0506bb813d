#include "Agenda/AgendaEvents.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace hbr {

namespace {

/// Finds the events of the pending lists among the upcoming ones.
class PendingEvents {
  public:
    explicit PendingEvents(const EventLists& lists) : shared_(lists.pending.begin(), lists.pending.end()) {
        for (const EventRef& task : lists.pendingAppleReminders)
            tasks_.emplace(task->id, task);
    }

    /// An event whose alert is due now is in both the scheduled and the pending list, which share it; tasks
    /// are equal, not shared.
    bool contains(const EventRef& event) const {
        if (shared_.contains(event)) return true;
        const auto [first, last] = tasks_.equal_range(event->id);
        return std::any_of(first, last, [&](const auto& task) { return *task.second == *event; });
    }

  private:
    std::unordered_set<EventRef> shared_;
    std::unordered_multimap<std::string, EventRef> tasks_;
};

}  // namespace

std::vector<AgendaEvent> agendaOf(const EventLists& lists) {
    const PendingEvents pending(lists);
    std::vector<AgendaEvent> all;
    for (auto&& event : lists.underWay())
        all.push_back({AgendaState::current, std::move(event)});
    for (auto&& event : lists.upcoming()) {
        const auto state = pending.contains(event) ? AgendaState::pending : AgendaState::upcoming;
        all.push_back({state, std::move(event)});
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
