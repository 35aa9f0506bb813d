#include "AgendaEvents.h"

#include "TemporaryFolder.h"

#include <Foundation/MainQueue.h>

#include <algorithm>

namespace hbr {

namespace {

/// Refers to something that the core owns.
template <class T>
std::shared_ptr<T> borrowed(T& object) {
    return std::shared_ptr<T>(std::shared_ptr<void>(), &object);
}

/// The user's settings with another number of days, in a file of its own that is gone afterwards.
class SettingsLookingAhead {
  public:
    SettingsLookingAhead(const CoreServices& core, int days) {
        const auto& diagnostics = core.environment()->diagnostics;
        const auto copy =
            std::make_shared<platform::DefaultsDomain>(folder_.path() / "shared.plist", diagnostics);
        for (const auto& [key, value] : core.sharedDomain()->values())
            copy->setValue(key, value);
        settings_ =
            std::make_shared<UserSettingsStore>(DefaultsDomains{core.standardDomain(), copy}, diagnostics);
        settings_->setUpcomingEventsDaysFilter(days);
    }
    const std::shared_ptr<UserSettingsStore>& settings() const { return settings_; }

  private:
    TemporaryFolder folder_;
    std::shared_ptr<UserSettingsStore> settings_;
};

std::vector<AgendaEvent> listsLookingAhead(CoreServices& core, int days) {
    const SettingsLookingAhead ahead(core, days);
    CalendarEventManager::Collaborators collaborators{core.environment(),
                                                      core.center(),
                                                      ahead.settings(),
                                                      borrowed(core.eventSettings()),
                                                      borrowed<CustomRemindersStoring>(core.reminders()),
                                                      borrowed(core.aggregatedEventStore()),
                                                      borrowed(core.parser()),
                                                      borrowed(core.demoEvents())};
    CalendarEventManager manager(std::move(collaborators), CalendarEventManager::Lifetime::oneShot);
    bool isDone = false;
    manager.reloadEvents(false, [&] { isDone = true; });
    platform::MainQueue::shared().runUntil([&] { return isDone; });
    return agendaOf(manager);
}

}  // namespace

std::vector<AgendaEvent> agendaOf(const CalendarEventManager& manager) {
    std::vector<AgendaEvent> all;
    for (auto& event : manager.allCachedCurrentEvents())
        all.push_back({AgendaState::current, event});
    auto pending = manager.pendingEvents();
    for (auto& event : manager.pendingAppleReminderEvents())
        pending.push_back(event);
    for (auto& event : manager.allCachedUpcomingEvents()) {
        const bool isPending = std::find(pending.begin(), pending.end(), event) != pending.end();
        all.push_back({isPending ? AgendaState::pending : AgendaState::upcoming, event});
    }
    return all;
}

std::vector<AgendaEvent> agendaEvents(CommandContext& context, std::optional<int> days) {
    CoreServices& core = context.core();
    if (days && *days > core.settings().upcomingEventsDaysFilter()) return listsLookingAhead(core, *days);

    reloadAndWait(core);
    auto all = agendaOf(core.manager());
    if (days) {
        const platform::Calendar& calendar = context.environment()->calendar;
        const platform::Date today = calendar.startOfDay(context.now());
        std::erase_if(all, [&](const AgendaEvent& one) {
            return calendar.daysBetween(today, one.event.startDate) > *days;
        });
    }
    return all;
}

}  // namespace hbr
