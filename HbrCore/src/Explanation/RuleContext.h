#pragma once

#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Attendance.h>
#include <HbrCore/Events/FilterRuleMatcher.h>
#include <HbrCore/Explanation/EventExplanation.h>
#include <HbrCore/Scheduling/AlertSchedule.h>
#include <HbrCore/Scheduling/ReloadSettings.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace hbr {

/// What every verdict is given by, read once.
struct RuleContext {
    RuleContext(const CoreServices& services, std::set<std::string> decidedIdentifiers);

    const CoreServices& core;
    const platform::Calendar& calendar;
    platform::Date now;
    /// What a reload goes by.
    std::shared_ptr<const ReloadSettings> settings;
    /// What a reload looks at.
    ReloadWindow window;
    const AlertSettings& alertSettings;
    AttendanceSettings attendance;
    const std::vector<FilterRule>& rules;
    FilterRuleMatcher matcher;
    AlertSchedule schedule;
    std::set<std::string> watchedCalendars;
    std::set<std::string> watchedLists;
    std::set<std::string> decided;

    std::optional<EventSettings> settingsOf(const Event& event) const {
        return EventSettingsStore::find(settings->eventSettings, event.id);
    }
};

inline RuleVerdict passes(ListingRule rule, Reason reason) {
    return {rule, RuleDecision::passes, std::move(reason)};
}

inline RuleVerdict hides(ListingRule rule, Reason reason, std::optional<std::string> command = std::nullopt) {
    return {rule, RuleDecision::hides, std::move(reason), std::move(command)};
}

/// Whether none of the verdicts hides it.
inline bool isListable(const std::vector<RuleVerdict>& verdicts) {
    return std::ranges::none_of(
        verdicts, [](const RuleVerdict& verdict) { return verdict.decision == RuleDecision::hides; });
}

}  // namespace hbr
