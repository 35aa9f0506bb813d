#pragma once

#include <HbrCore/Events/FilterRule.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Scheduling/ReloadWindow.h>
#include <HbrCore/Stores/AggregatedEventStore.h>
#include <HbrCore/Stores/EventSettingsStore.h>

#include <cstdint>
#include <optional>
#include <vector>

namespace hbr {

class UserSettingsStore;

/// The settings that a reload depends on, read once. Who looks at the same events with the same value has the
/// same window, rules and alerts.
struct ReloadSettings {
    /// How many days after today are looked at.
    std::int64_t days = 7;
    /// Leads, travel time, and which events alert.
    AlertSettings alerts;
    std::vector<FilterRule> excludeRules;
    /// What was chosen for single events; absent when it cannot be read.
    std::optional<EventSettingsStore::Settings> eventSettings;
    /// Demonstration events take the place of everything.
    bool isScreenshotMode = false;

    static ReloadSettings of(const UserSettingsStore& settings, const EventSettingsStore& eventSettings);

    ReloadWindow window(const platform::Calendar& calendar, platform::Date now) const {
        return ReloadWindow::of(calendar, now, days);
    }
    AggregatedEventStore::Choices choices() const {
        return {.attendance = alerts.attendance(),
                .timeOffset = static_cast<double>(alerts.timeOffsetSeconds),
                .eventSettings = eventSettings};
    }
};

}  // namespace hbr
